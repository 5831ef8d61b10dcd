#include "pmml/DocumentTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "pmml/TreeBuilder.h"
#include "support/TreeOf.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An element and all in it, as "element{attribute='value'}(child,child)", with text in brackets.
std::string Outline(Element node) {
    if (node.IsText()) return "[" + std::string(node.GetText()) + "]";
    std::string outline(node.GetSpelling());
    for (std::size_t i = 0; i < node.CountAttributes(); ++i) {
        const Element::Attribute attribute = node.GetAttributeAt(i);
        outline += (i == 0 ? "{" : " ") + std::string(node.GetTree().GetSpelling(attribute.name)) + "='" +
                   std::string(attribute.value) + "'";
    }
    if (node.CountAttributes() > 0) outline += "}";
    std::string inner;
    for (const Element child : node.GetChildNodes())
        inner += (inner.empty() ? "" : ",") + Outline(child);
    return inner.empty() ? outline : outline + "(" + inner + ")";
}

std::string OutlineOf(const std::string& text) {
    return Outline(TreeOf(text)->GetRoot());
}

/// The places of elements, one after the other.
template <typename Elements>
std::vector<std::string> PathsOf(const Elements& elements) {
    std::vector<std::string> paths;
    for (const Element element : elements)
        paths.push_back(element.GetPlace().elementPath);
    return paths;
}

TEST(DocumentTree, HasElementsAttributesAndTextsAsTheyStand) {
    EXPECT_EQ(OutlineOf("<a x='1' PMML='&lt;&#228;'><b/>text<c><d y=''/></c></a>"),
              "a{x='1' PMML='<\xC3\xA4'}(b,[text],c(d{y=''}))");
    EXPECT_EQ(OutlineOf("<a>one<!-- x -->two<![CDATA[ <three>]]></a>"), "a([onetwo <three>])");
}

TEST(DocumentTree, HasNoBlanksBetweenElements) {
    EXPECT_EQ(OutlineOf("<a>\n <b>\r\n\t<c/> </b> <d/>\n</a>\n"), "a(b(c),d)");
    EXPECT_EQ(OutlineOf("<a> <!-- x --> <b/> <!-- y --> </a>"), "a(b)");
}

TEST(DocumentTree, KeepsBlanksThatAreAnElementsContent) {
    EXPECT_EQ(OutlineOf("<a> </a>"), "a([ ])");
    EXPECT_EQ(OutlineOf("<a>\n<b> \t</b></a>"), "a(b([ \t]))");
    EXPECT_EQ(OutlineOf("<a> <!-- x --> </a>"), "a([  ])");
    EXPECT_EQ(OutlineOf("<a><b/><b> </b></a>"), "a(b,b([ ]))");
    EXPECT_EQ(OutlineOf("<a><![CDATA[ ]]><b/></a>"), "a([ ],b)");
}

TEST(DocumentTree, KeepsBlanksAroundText) {
    EXPECT_EQ(OutlineOf("<a> x </a>"), "a([ x ])");
    EXPECT_EQ(OutlineOf("<a> <b/> x <b/> </a>"), "a(b,[ x ],b)");
    EXPECT_EQ(OutlineOf("<a>x<!-- y --> </a>"), "a([x ])");
    EXPECT_EQ(OutlineOf("<a> <?p i?> </a>"), "a([  ])");
    EXPECT_EQ(OutlineOf("<a> <!-- y -->x</a>"), "a([ x])");
    EXPECT_EQ(OutlineOf("<a>&#32;&#10;<b/></a>"), OutlineOf("<a> \n<b/></a>"));
    EXPECT_EQ(OutlineOf("<a>" + std::string(200000, ' ') + "x</a>"), "a([" + std::string(200000, ' ') + "x])");
}

TEST(DocumentTree, TellsNamesApartByNumber) {
    const ParsedDocument tree = TreeOf("<PMML><DataField/><own/><own/><Own/><DataFields/></PMML>");
    const std::vector<Element> children = tree->GetRoot().GetChildren().List();
    EXPECT_EQ(tree->GetRoot().GetName(), Name::PMML);
    EXPECT_EQ(children[0].GetName(), Name::DataField);
    EXPECT_GE(static_cast<std::uint32_t>(children[1].GetName()), knownNameCount);
    EXPECT_EQ(children[1].GetName(), children[2].GetName());
    EXPECT_NE(children[1].GetName(), children[3].GetName());
    EXPECT_EQ(children[3].GetSpelling(), "Own");
    EXPECT_EQ(children[4].GetTag(), "<DataFields>");
}

TEST(DocumentTree, KnowsEachNameOnce) {
    std::vector<std::string_view> names(std::begin(knownNames), std::end(knownNames));
    std::ranges::sort(names);
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
    EXPECT_EQ(SpellingOf(Name::zeroThreshold), "zeroThreshold");
    EXPECT_EQ(SpellingOf(Name::Application), "Application");
}

TEST(DocumentTree, StepsFromElementToElement) {
    const ParsedDocument tree = TreeOf("<r>x<a><b/>y<b/></a><c/>z<a/></r>");
    const Element root = tree->GetRoot();
    EXPECT_THAT(PathsOf(root.GetChildren()), ElementsAre("/r/a[1]", "/r/c[1]", "/r/a[2]"));
    EXPECT_THAT(PathsOf(root.GetDescendants()),
                ElementsAre("/r/a[1]", "/r/a[1]/b[1]", "/r/a[1]/b[2]", "/r/c[1]", "/r/a[2]"));
    const Element first = root.GetFirstChild();
    EXPECT_THAT(PathsOf(root.GetChildren(first.GetName())), ElementsAre("/r/a[1]", "/r/a[2]"));
    EXPECT_THAT(PathsOf(root.GetDescendants(first.GetFirstChild().GetName())),
                ElementsAre("/r/a[1]/b[1]", "/r/a[1]/b[2]"));
    EXPECT_EQ(first.GetNextSibling().GetSpelling(), "c");
    EXPECT_EQ(first.GetNextSibling().GetNextSibling().GetPlace().elementPath, "/r/a[2]");
    EXPECT_FALSE(first.GetNextSibling().GetNextSibling().GetNextSibling());
    EXPECT_EQ(first.GetFirstChild().GetParent(), first);
    EXPECT_FALSE(root.GetParent());
    EXPECT_TRUE(root.Holds(first.GetFirstChild()));
    EXPECT_TRUE(first.Holds(first));
    EXPECT_FALSE(first.Holds(first.GetNextSibling()));
}

TEST(DocumentTree, AnswersNothing_WhenAskedOfNoElement) {
    const Element none;
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.GetFirstChild().GetNextSibling().GetParent().GetChild(Name::PMML));
    EXPECT_FALSE(none.GetAttribute(Name::name));
    EXPECT_TRUE(none.GetChildren().IsEmpty());
    EXPECT_TRUE(none.GetDescendants().IsEmpty());
    EXPECT_EQ(none.GetName(), Name::none);
    EXPECT_EQ(none.GetSpelling(), "");
    EXPECT_EQ(none.GetTag(), "The document");
    EXPECT_EQ(none.GetPlace().elementPath, "");
    EXPECT_EQ(none.CountAttributes(), 0U);
    EXPECT_EQ(none.GetTextInside(), "");
}

TEST(DocumentTree, TellsAnEmptyAttributeFromNone) {
    const ParsedDocument tree = TreeOf("<a name='' value='v'/>");
    EXPECT_EQ(tree->GetRoot().GetAttribute(Name::name), "");
    EXPECT_TRUE(tree->GetRoot().Has(Name::name));
    EXPECT_EQ(tree->GetRoot().GetAttributeOr(Name::value, "none"), "v");
    EXPECT_FALSE(tree->GetRoot().Has(Name::count));
    EXPECT_EQ(tree->GetRoot().GetAttributeOr(Name::count, "none"), "none");
}

TEST(DocumentTree, PutsTextsTogether) {
    const ParsedDocument tree = TreeOf("<a>one<b>two</b>three</a>");
    EXPECT_EQ(tree->GetRoot().GetTextInside(), "onethree");
    EXPECT_EQ(tree->GetRoot().GetWholeText(), "onetwothree");
}

TEST(DocumentTree, FindsElementsAlike_WhateverTheOrderOfTheirAttributes) {
    const auto alike = [](const std::string& left, const std::string& right) {
        const ParsedDocument tree = TreeOf("<r>" + left + right + "</r>");
        const Element first = tree->GetRoot().GetFirstChild();
        return first.IsLike(first.GetNextSibling());
    };
    EXPECT_TRUE(alike("<a x='1' y='2'><b/>t</a>", "<a y='2' x='1'> <!-- --><b/>t</a>"));
    EXPECT_FALSE(alike("<a x='1'/>", "<a x='2'/>"));
    EXPECT_FALSE(alike("<a x='1'/>", "<a/>"));
    EXPECT_FALSE(alike("<a x='1'/>", "<a y='1'/>"));
    EXPECT_FALSE(alike("<a>t</a>", "<a>u</a>"));
    EXPECT_FALSE(alike("<a><b/><c/></a>", "<a><b><c/></b></a>"));
    EXPECT_FALSE(alike("<a><b/></a>", "<a><b/><b/></a>"));
    EXPECT_FALSE(alike("<a/>", "<b/>"));
}

TEST(DocumentTree, HoldsWhateverIsLongOrMany) {
    const std::string value(100'000, 'v');
    std::string text = "<a>";
    for (int i = 0; i < 5000; ++i)
        text += "<b name='" + std::to_string(i) + "'/>";
    const ParsedDocument tree = TreeOf(text + "<c name='" + value + "'/></a>");
    int number = 0;
    for (const Element element : tree->GetRoot().GetChildren()) {
        if (element.GetSpelling() == "b") {
            EXPECT_EQ(element.GetAttribute(Name::name), std::to_string(number++));
        } else {
            EXPECT_EQ(element.GetAttribute(Name::name), value);
        }
    }
    EXPECT_EQ(number, 5000);
    EXPECT_GT(tree->GetMemory(), 5000U * 44);
    EXPECT_LT(tree->GetMemory(), 5000U * 44 + 400'000);
}

TEST(DocumentTree, SharesItsTexts_WhenAnotherIsMadeOfIt) {
    const ParsedDocument original = TreeOf("<own name='kept' other='gone'/>");
    const Element root = original->GetRoot();
    TreeBuilder builder(*original);
    builder.BeginElement(root.GetName(), root.GetLine(), root.GetColumn());
    builder.AddKeptAttribute(Name::name, *root.GetAttribute(Name::name));
    builder.AddAttribute(builder.FindOrAddName("new"), "added");
    builder.EndElement();
    const ParsedDocument changed = builder.Finish();
    EXPECT_EQ(Outline(changed->GetRoot()), "own{name='kept' new='added'}");
    EXPECT_EQ(changed->GetRoot().GetAttribute(Name::name)->data(), root.GetAttribute(Name::name)->data());
    EXPECT_EQ(changed->GetRoot().GetPlace().line, 1U);
}

TEST(DocumentTree, NeverChanges) {
    static_assert(!std::is_copy_constructible_v<DocumentTree> && !std::is_copy_assignable_v<DocumentTree>);
    static_assert(std::is_same_v<ParsedDocument, std::unique_ptr<const DocumentTree>>);
    static_assert(std::is_trivially_copyable_v<Element> && sizeof(Element) == 2 * sizeof(void*));
}

TEST(ElementPaths, CountNamesakes_InWhateverOrderTheyAreAskedFor) {
    const std::vector<std::string> paths = {"/r/a[1]", "/r/a[1]/b[1]", "/r/a[1]/b[2]", "/r/c[1]",
                                            "/r/a[2]", "/r/c[2]",      "/r/c[2]/b[1]", "/r/a[3]"};
    const ParsedDocument tree = TreeOf("<r>x<a><b/><!-- --><b/></a><c/><a/><c><b/></c><a/></r>");
    const std::vector<Element> elements = tree->GetRoot().GetDescendants().List();
    ASSERT_EQ(elements.size(), paths.size());
    std::vector<std::size_t> order(paths.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        ElementPaths finder;
        for (const std::size_t i : order)
            EXPECT_EQ(finder.Find(elements[i]), paths[i]);
        for (const std::size_t i : order)
            EXPECT_EQ(finder.Find(elements[i]), paths[i]) << "asked for again";
        EXPECT_EQ(finder.Find(tree->GetRoot()), "/r");
        std::shuffle(order.begin(), order.end(), random);
    }
}

}  // namespace
}  // namespace nbscore::test
