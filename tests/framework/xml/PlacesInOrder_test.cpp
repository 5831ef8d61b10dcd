#include "framework/xml/PlacesInOrder.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentProbe.h"

namespace {

using nbscore::PlacesInOrder;
using xercesc::DOMElement;

std::string TextOf(PlacesInOrder::LineAndColumn place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

TEST(PlacesInOrder, TellsEachPlace_WhenAskedInDocumentOrder) {
    WithDocument("<r>\n<a/>\n <b>\n<c/></b>\n<d/></r>", [](DocumentProbe&, xercesc::DOMDocument& document) {
        const DOMElement* a = BaseTranslator::GetFirstChildElt(document.getDocumentElement());
        const DOMElement* b = BaseTranslator::GetNextSiblingElt(a);
        PlacesInOrder places(document);
        EXPECT_EQ(TextOf(places.Find(*a)), "2:1");
        EXPECT_EQ(TextOf(places.Find(*a)), "2:1");
        EXPECT_EQ(TextOf(places.Find(*BaseTranslator::GetFirstChildElt(b))), "4:1");
        EXPECT_EQ(TextOf(places.Find(*BaseTranslator::GetNextSiblingElt(b))), "5:1");
    });
}

TEST(PlacesInOrder, TellsNothingMore_WhenAskedBackwards) {
    WithDocument("<r>\n<a/>\n<b/></r>", [](DocumentProbe&, xercesc::DOMDocument& document) {
        const DOMElement* a = BaseTranslator::GetFirstChildElt(document.getDocumentElement());
        const DOMElement* b = BaseTranslator::GetNextSiblingElt(a);
        PlacesInOrder places(document);
        EXPECT_EQ(TextOf(places.Find(*b)), "3:1");
        EXPECT_EQ(TextOf(places.Find(*a)), "0:0");
        EXPECT_EQ(TextOf(places.Find(*b)), "0:0");
    });
}

}  // namespace
