#include "fuzz/XmlOutline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

namespace nbscore::fuzz {
namespace {

using testing::ElementsAre;

/// Of each element "NAME|WHOLE|CONTENT" and of each of its attributes "|VALUE in WHOLE".
std::vector<std::string> Describe(std::string_view text) {
    std::vector<std::string> described;
    for (const ElementSpan& element : OutlineOf(text)) {
        std::string& line = described.emplace_back(element.name.In(text));
        line.append("|").append(element.whole.In(text)).append("|").append(element.content.In(text));
        for (const AttributeSpan& attribute : element.attributes)
            line.append("|").append(attribute.value.In(text)).append(" in").append(attribute.whole.In(text));
    }
    return described;
}

TEST(XmlOutline, FindsElementsAndAttributes) {
    EXPECT_THAT(Describe("x<a p=\"1\"  q = '>'>t<b/><c>u</c ></a>y"),
                ElementsAre("a|<a p=\"1\"  q = '>'>t<b/><c>u</c ></a>|t<b/><c>u</c >|1 in p=\"1\"|> in  q = '>'",
                            "b|<b/>|", "c|<c>u</c >|u"));
}

TEST(XmlOutline, SkipsWhatIsNoElement) {
    EXPECT_THAT(Describe("<?xml x='<a>'?><!DOCTYPE p><!--<a>--><p><![CDATA[<a>]]></p>"),
                ElementsAre("p|<p><![CDATA[<a>]]></p>|<![CDATA[<a>]]>"));
    EXPECT_THAT(Describe("no markup > at all"), ElementsAre());
    EXPECT_THAT(Describe("</a></a>"), ElementsAre());
}

TEST(XmlOutline, EndsUnclosedElements_AtTheEndOfTheText) {
    EXPECT_THAT(Describe("<a><b>t"), ElementsAre("a|<a><b>t|<b>t", "b|<b>t|t"));
    EXPECT_THAT(Describe("<a p='1"), ElementsAre("a|<a p='1|"));
}

TEST(XmlOutline, StaysInsideTheText_ForAnyText) {
    const std::string_view pieces = "<<<>>/=\"' ab!-[]?";
    std::mt19937 random(5);
    std::size_t found = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string text(random() % 40, ' ');
        for (char& character : text)
            character = pieces[random() % pieces.size()];
        for (const ElementSpan& element : OutlineOf(text)) {
            ++found;
            ASSERT_LE(element.whole.end, text.size()) << text;
            for (const Span& part : {element.name, element.content}) {
                ASSERT_LE(part.begin, part.end) << text;
                ASSERT_TRUE(element.whole.Holds(part)) << text;
            }
            for (const AttributeSpan& attribute : element.attributes) {
                ASSERT_TRUE(element.whole.Holds(attribute.whole)) << text;
                ASSERT_TRUE(attribute.whole.Holds(attribute.value)) << text;
            }
        }
    }
    EXPECT_GT(found, 20'000U);
}

}  // namespace
}  // namespace nbscore::fuzz
