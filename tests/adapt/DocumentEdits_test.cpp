#include "adapt/DocumentEdits.h"

#include <gtest/gtest.h>

#include "pmml/DomDocument.h"
#include "support/TreeOf.h"
#include "support/XmlText.h"

namespace nbscore::test {
namespace {

class DocumentEditing : public testing::Test {
protected:
    void Read(const std::string& text) {
        tree = TreeOf(text);
        root = tree->GetRoot();
        edits.emplace(*tree, adaptations);
    }
    /// The changed document as text; nothing where it is not changed.
    std::string Apply() const {
        const ParsedDocument changed = edits->Apply();
        if (changed == nullptr) return {};
        const std::string text = XmlTextOf(*WriteDom(*changed));
        return text.substr(text.find("?>") + 2);
    }

    ParsedDocument tree;
    Element root;
    std::vector<Adaptation> adaptations;
    std::optional<DocumentEdits> edits;
};

TEST_F(DocumentEditing, ChangesNothing_WhereNothingIsNoted) {
    Read("<a><b/></a>");
    edits->NoteWhatStays(root.GetFirstChild(), "stays");
    EXPECT_EQ(Apply(), "");
    ASSERT_EQ(adaptations.size(), 1U);
    EXPECT_FALSE(adaptations[0].isMade);
    EXPECT_EQ(adaptations[0].place.column, 4U);
}

TEST_F(DocumentEditing, SetsAttributes_AndShowsThemAtOnce) {
    Read("<a name=\"one\" value=\"v\"/>");
    edits->SetAttribute(root, Name::name, "two", "changed");
    edits->SetAttribute(root, Name::count, "3", "added");
    edits->SetAttribute(root, Name::name, "three", "changed again");
    EXPECT_EQ(edits->GetAttribute(root, Name::name), "three");
    EXPECT_EQ(edits->GetAttribute(root, Name::value), "v");
    EXPECT_FALSE(edits->Has(root, Name::field));
    EXPECT_EQ(root.GetAttribute(Name::name), "one");
    EXPECT_EQ(Apply(), "<a count=\"3\" name=\"three\" value=\"v\"/>");
}

TEST_F(DocumentEditing, LeavesElementsOut_WithAllThatIsInThem) {
    Read("<a><b><c/>x</b><d/><b><c/></b></a>");
    const Element first = root.GetFirstChild();
    const Element second = first.GetNextSibling().GetNextSibling();
    edits->LeaveOut(first.GetFirstChild(), "inner");
    EXPECT_TRUE(edits->IsLeftOut(first.GetFirstChild()));
    EXPECT_FALSE(edits->IsLeftOut(first));
    edits->LeaveOut(first, "outer");
    EXPECT_TRUE(edits->IsLeftOut(first));
    EXPECT_TRUE(edits->IsLeftOut(first.GetFirstChild()));
    edits->LeaveOut(second.GetFirstChild(), "last");
    EXPECT_FALSE(edits->IsLeftOut(root));
    EXPECT_FALSE(edits->IsLeftOut(second));
    EXPECT_FALSE(edits->IsLeftOut(first.GetNextSibling()));
    EXPECT_EQ(Apply(), "<a><d/><b/></a>");
}

TEST_F(DocumentEditing, MovesElements_WithTheirChanges) {
    Read("<a><b><c name=\"1\"/></b><d>x</d></a>");
    const Element c = root.GetFirstChild().GetFirstChild();
    edits->SetAttribute(c, Name::name, "2", "changed");
    edits->Move(c, root.GetFirstChild().GetNextSibling(), "moved");
    EXPECT_EQ(Apply(), "<a><b/><d>x<c name=\"2\"/></d></a>");
}

TEST_F(DocumentEditing, AddsElements_WhereTheElementAroundThemStands) {
    Read("<a>\n<b><c/></b></a>");
    const Element b = root.GetFirstChild();
    edits->NoteMove(b.GetFirstChild(), "moved");
    edits->AddBehind(b, {.name = Name::Value, .attributes = {}, .children = {}, .moved = {b.GetFirstChild()}});
    edits->AddInto(b, {.name = Name::Extension,
                       .attributes = {{Name::name, "n"}},
                       .children = {{.name = Name::Target, .attributes = {}, .children = {}, .moved = {}}},
                       .moved = {}});
    EXPECT_EQ(Apply(), "<a><b><Extension name=\"n\"><Target/></Extension></b><Value><c/></Value></a>");
    const ParsedDocument changed = edits->Apply();
    const Element changedB = changed->GetRoot().GetFirstChild();
    EXPECT_EQ(changedB.GetFirstChild().GetLine(), 2U);
    EXPECT_EQ(changedB.GetNextSibling().GetLine(), 1U);
    EXPECT_EQ(changedB.GetNextSibling().GetFirstChild().GetLine(), 2U);
}

}  // namespace
}  // namespace nbscore::test
