#include "framework/xml/Refusal.h"

#include <gtest/gtest.h>

#include "framework/xml/DocumentProbe.h"
#include "framework/xml/XmlName.h"

namespace {

using nbscore::XmlName;
using xercesc::DOMDocument;

constexpr const char* document = "<a>\n<b n='2.5' i='7' bad='x'/></a>";

void ExpectRefusedAtB(const std::optional<VeskException>& refusal, VeskException::ExceptionCode code,
                      const std::string& message) {
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), code);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "2:1 /a/b[1]");
}

TEST(Refusal, CarriesCodeMessageAndPlace_WhenMadeForANode) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* b = BaseTranslator::GetFirstChildElt(dom.getDocumentElement());
        ExpectRefusedAtB(nbscore::RefusalAt(b, VeskException::InvalidContent, "text"), VeskException::InvalidContent,
                         "text");
    });
}

TEST(Refusal, HasNoPath_WhenThereIsNoNode) {
    const VeskException refusal = nbscore::RefusalAt(nullptr, VeskException::InvalidContent, "text");
    EXPECT_EQ(PlaceText(refusal.GetPlace()), "0:0 ");
}

TEST(Refusal, CarriesThePlace_WhenANumberOfAnElementIsWrong) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* b = BaseTranslator::GetFirstChildElt(dom.getDocumentElement());
        EXPECT_EQ(nbscore::RequiredDouble(b, XmlName("n")), 2.5);
        EXPECT_EQ(nbscore::DoubleAt(b, XmlName("4")), 4.0);
        EXPECT_EQ(nbscore::IntAt(b, BaseTranslator::GetAttribute(b, XmlName("i"))), 7);
        ExpectRefusedAtB(RefusalOf([&] { nbscore::RequiredDouble(b, XmlName("none")); }),
                         VeskException::MissingAttribute, "<b> has no attribute \"none\".");
        ExpectRefusedAtB(RefusalOf([&] { nbscore::RequiredDouble(b, XmlName("bad")); }), VeskException::InvalidNumber,
                         "\"x\" is no number.");
        ExpectRefusedAtB(RefusalOf([&] { nbscore::DoubleAt(b, nullptr); }), VeskException::InvalidNumber,
                         "\"\" is no number.");
        ExpectRefusedAtB(RefusalOf([&] { nbscore::IntAt(b, XmlName("2.5")); }), VeskException::InvalidNumber,
                         "\"2.5\" is no whole number of 32 bits.");
    });
}

}  // namespace
