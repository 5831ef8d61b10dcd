#include "framework/xml/PlaceKeeper.h"

#include <gtest/gtest.h>

#include "framework/xml/DocumentProbe.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace {

using nbscore::PlaceKeeper;
using nbscore::PlaceOf;
using xercesc::DOMElement;

class PlaceKeeperTest : public testing::Test {
protected:
    /// Runs changes on <r>, with <a>, <b> (which holds <c>) and <d> on the lines 2 to 5.
    template <typename Change>
    void Changing(const Change& change) {
        WithDocument("<r>\n<a/>\n<b>\n<c/></b>\n<d/></r>", [&](DocumentProbe&, xercesc::DOMDocument& document) {
            DOMElement* root = document.getDocumentElement();
            DOMElement* a = BaseTranslator::GetFirstChildElt(root);
            DOMElement* b = BaseTranslator::GetNextSiblingElt(a);
            change(document, *root, *a, *b, *BaseTranslator::GetNextSiblingElt(b));
        });
    }
};

TEST_F(PlaceKeeperTest, KeepsPlaces_WhenElementsGo) {
    Changing([](auto& document, DOMElement& root, DOMElement& a, DOMElement& b, DOMElement& d) {
        PlaceKeeper keeper(document);
        root.removeChild(&b);
        keeper.Settle();
        EXPECT_EQ(PlaceText(PlaceOf(&a)), "2:1 /r/a[1]");
        EXPECT_EQ(PlaceText(PlaceOf(&d)), "5:1 /r/d[1]");
        EXPECT_EQ(keeper.MarkOf(&b).line, 3U);
        EXPECT_EQ(keeper.MarkOf(b.getFirstChild()).line, 4U);
    });
}

TEST_F(PlaceKeeperTest, KeepsPlaces_WhenElementsMove) {
    Changing([](auto& document, DOMElement& root, DOMElement& a, DOMElement& b, DOMElement& d) {
        PlaceKeeper keeper(document);
        root.insertBefore(&d, &a);
        keeper.Settle();
        EXPECT_EQ(PlaceText(PlaceOf(&d)), "5:1 /r/d[1]");
        EXPECT_EQ(PlaceText(PlaceOf(&a)), "2:1 /r/a[1]");
        EXPECT_EQ(PlaceText(PlaceOf(BaseTranslator::GetFirstChildElt(&b))), "4:1 /r/b[1]/c[1]");
    });
}

TEST_F(PlaceKeeperTest, GivesANewElementThePlaceAroundIt) {
    Changing([](auto& document, DOMElement&, DOMElement& a, DOMElement& b, DOMElement&) {
        PlaceKeeper keeper(document);
        a.appendChild(document.createElement(nbscore::XmlName("new")));
        a.getFirstChild()->appendChild(document.createElement(nbscore::XmlName("newer")));
        keeper.Settle();
        EXPECT_EQ(PlaceText(PlaceOf(a.getFirstChild()->getFirstChild())), "2:1 /r/a[1]/new[1]/newer[1]");
        EXPECT_EQ(PlaceText(PlaceOf(&b)), "3:1 /r/b[1]");
    });
}

/// Its address lies between those of elements that the keeper knows.
TEST_F(PlaceKeeperTest, GivesAnElementThatStoodOutsideThePlaceAroundIt) {
    Changing([](auto& document, DOMElement&, DOMElement& a, DOMElement&, DOMElement& d) {
        DOMElement* const outside = document.createElement(nbscore::XmlName("outside"));
        d.appendChild(document.createElement(nbscore::XmlName("later")));
        PlaceKeeper keeper(document);
        a.appendChild(outside);
        keeper.Settle();
        EXPECT_EQ(PlaceText(PlaceOf(outside)), "2:1 /r/a[1]/outside[1]");
    });
}

}  // namespace
