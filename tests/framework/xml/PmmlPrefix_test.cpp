#include <gtest/gtest.h>

#include <xercesc/dom/DOMNodeList.hpp>

#include "framework/xml/DocumentProbe.h"
#include "framework/xml/PmmlPrefix.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace {

/// The names of all elements, in document order, with blanks between.
std::string NamesIn(const std::string& text) {
    std::string names;
    WithDocument(text, [&](DocumentProbe&, xercesc::DOMDocument& document) {
        const xercesc::DOMNodeList* all = BaseTranslator::GetElementsByTagName(&document, nbscore::XmlName("*"));
        for (XMLSize_t i = 0; i < all->getLength(); ++i)
            names += (i == 0 ? "" : " ") + nbscore::Utf8Of(all->item(i)->getNodeName());
    });
    return names;
}

TEST(PmmlPrefix, EndsAtTheFirstColon) {
    using nbscore::WithoutPrefix;
    EXPECT_EQ(WithoutPrefix(std::string_view("row")), "row");
    EXPECT_EQ(WithoutPrefix(std::string_view("d:row")), "row");
    EXPECT_EQ(WithoutPrefix(std::string_view("d:e:row")), "e:row");
    EXPECT_EQ(WithoutPrefix(std::string_view(":row")), "row");
    EXPECT_EQ(WithoutPrefix(std::string_view("d:")), "");
    EXPECT_EQ(WithoutPrefix(std::string_view("")), "");
    constexpr nbscore::XmlName name{"d:e:row"};
    EXPECT_EQ(nbscore::Utf8Of(WithoutPrefix(static_cast<const XMLCh*>(name))), "e:row");
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

TEST(PmmlPrefix, LeavesPlacesAlone) {
    WithDocument("<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'>\n<p:a/>\n  <p:b/></p:PMML>",
                 [](DocumentProbe&, xercesc::DOMDocument& document) {
                     const xercesc::DOMElement* first = BaseTranslator::GetFirstChildElt(document.getDocumentElement());
                     EXPECT_EQ(PlaceText(nbscore::PlaceOf(BaseTranslator::GetNextSiblingElt(first))), "3:3 /PMML/b[1]");
                 });
}

}  // namespace
