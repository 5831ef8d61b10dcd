#include <gtest/gtest.h>

#include "pmml/DocumentProbe.h"
#include "support/TreeOf.h"

namespace {

/// The names of all elements, in document order, with blanks between.
std::string NamesIn(const std::string& text) {
    const auto tree = nbscore::test::TreeOf(text);
    std::string names(tree->GetRoot().GetSpelling());
    for (const nbscore::Element element : tree->GetRoot().GetDescendants())
        names += " " + std::string(element.GetSpelling());
    return names;
}

TEST(PmmlPrefix, EndsAtTheFirstColon) {
    using nbscore::WithoutPrefix;
    EXPECT_EQ(WithoutPrefix("row"), "row");
    EXPECT_EQ(WithoutPrefix("d:row"), "row");
    EXPECT_EQ(WithoutPrefix("d:e:row"), "e:row");
    EXPECT_EQ(WithoutPrefix(":row"), "row");
    EXPECT_EQ(WithoutPrefix("d:"), "");
    EXPECT_EQ(WithoutPrefix(""), "");
}

TEST(PmmlPrefix, IsDropped_WhenTheRootBindsItToPmml) {
    EXPECT_EQ(NamesIn("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:Header/><p:a><p:b/></p:a></p:PMML>"),
              "PMML Header a b");
    EXPECT_EQ(NamesIn("<x.y:PMML xmlns:x.y='http://www.dmg.org/PMML-3_0'/>"), "PMML");
}

TEST(PmmlPrefix, OfOthersStays) {
    EXPECT_EQ(NamesIn("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4' xmlns:q='urn:q'><q:a/><b/><pp:c/></p:PMML>"),
              "PMML q:a b pp:c");
    EXPECT_EQ(NamesIn("<p:PMML xmlns:p='urn:other'><p:a/></p:PMML>"), "p:PMML p:a");
    EXPECT_EQ(NamesIn("<p:PMML><p:a/></p:PMML>"), "p:PMML p:a");
    EXPECT_EQ(NamesIn("<PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:a/></PMML>"), "PMML p:a");
}

TEST(PmmlPrefix, StaysWhereItMeansSomethingElse) {
    EXPECT_EQ(NamesIn("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:a><p:b xmlns:p='urn:b'><p:c/></p:b><p:d/></p:a>"
                      "<p:e/></p:PMML>"),
              "PMML a p:b p:c d e");
    EXPECT_EQ(NamesIn("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:a/><p:b xmlns:p='urn:b'><p:c/></p:b></p:PMML>"),
              "PMML a p:b p:c");
}

TEST(PmmlPrefix, IsDroppedFromNamesThatAreKnown) {
    const auto tree = nbscore::test::TreeOf("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:BayesInput/></p:PMML>");
    EXPECT_TRUE(tree->GetRoot().Is(nbscore::Name::PMML));
    EXPECT_TRUE(tree->GetRoot().GetFirstChild().Is(nbscore::Name::BayesInput));
}

TEST(PmmlPrefix, LeavesPlacesAlone) {
    const auto tree =
        nbscore::test::TreeOf("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'>\n<p:a/>\n  <p:b/></p:PMML>");
    EXPECT_EQ(PlaceText(tree->GetRoot().GetFirstChild().GetNextSibling().GetPlace()), "3:3 /PMML/b[1]");
}

}  // namespace
