#include "pmml/Refusal.h"

#include <gtest/gtest.h>

#include "pmml/DocumentProbe.h"
#include "support/TreeOf.h"

namespace {

using nbscore::Element;
using nbscore::Name;

class Refusal : public testing::Test {
protected:
    static void ExpectAtB(const std::optional<VeskException>& refusal, VeskException::ExceptionCode code,
                          const std::string& message) {
        ASSERT_TRUE(refusal) << message;
        EXPECT_EQ(refusal->GetCode(), code);
        EXPECT_EQ(refusal->GetMessage(), message);
        EXPECT_EQ(PlaceText(refusal->GetPlace()), "2:1 /a/b[1]");
    }

    const nbscore::ParsedDocument tree =
        nbscore::test::TreeOf("<a>\n<b norm='2.5' rank='7' value='x' name='\xC3\xA4'/></a>");
    const Element b = tree->GetRoot().GetFirstChild();
};

TEST_F(Refusal, CarriesCodeMessageAdviceAndPlace_WhenMadeForAnElement) {
    const VeskException refusal = nbscore::RefusalAt(b, nbscore::Refusal::OrigsNotAscending, {"1", "2"});
    ExpectAtB(refusal, VeskException::InvalidContent, "The orig 1 is not above the one before it, 2.");
    EXPECT_EQ(refusal.GetAdvice(), "Sort the LinearNorm elements by orig, and give each another orig.");
}

TEST_F(Refusal, HasNoPath_WhenThereIsNoElement) {
    const VeskException refusal = nbscore::RefusalAt({}, nbscore::Refusal::ThresholdZero);
    EXPECT_EQ(PlaceText(refusal.GetPlace()), "0:0 ");
}

TEST_F(Refusal, CarriesThePlace_WhenANumberOfAnElementIsWrong) {
    EXPECT_EQ(nbscore::RequiredDouble(b, Name::norm), 2.5);
    EXPECT_EQ(nbscore::DoubleAt(b, "4"), 4.0);
    EXPECT_EQ(nbscore::IntAt(b, *b.GetAttribute(Name::rank)), 7);
    ExpectAtB(RefusalOf([&] { nbscore::RequiredDouble(b, Name::count); }), VeskException::MissingAttribute,
              "<b> has no attribute \"count\".");
    ExpectAtB(RefusalOf([&] { nbscore::RequiredDouble(b, Name::value); }), VeskException::InvalidNumber,
              "\"x\" is no number.");
    ExpectAtB(RefusalOf([&] { nbscore::DoubleAt(b, {}); }), VeskException::InvalidNumber, "\"\" is no number.");
    ExpectAtB(RefusalOf([&] { nbscore::IntAt(b, "2.5"); }), VeskException::InvalidNumber,
              "\"2.5\" is no whole number of 32 bits.");
}

TEST_F(Refusal, CarriesThePlace_WhenAnEncodingCannotHoldAText) {
    const Transcoder latin("ISO-8859-1");
    EXPECT_EQ(nbscore::AttributeText(latin, b, Name::name), "\xE4");
    EXPECT_EQ(nbscore::AttributeText(latin, b, Name::count), "");
    ExpectAtB(RefusalOf([&] { nbscore::AttributeText(Transcoder("US-ASCII"), b, Name::name); }),
              VeskException::UnsupportedEncoding, "The encoding \"US-ASCII\" cannot hold the text \"\xC3\xA4\".");
}

TEST_F(Refusal, StandsAtTheElementOrItsParent_WhenAnotherNameIsRequired) {
    using nbscore::Refusal;
    const auto require = [](Element element, Element parent) {
        return RefusalOf([&] { nbscore::RequireName(element, Name::DataField, parent, Refusal::DataFieldExpected); });
    };
    ExpectAtB(require(b, tree->GetRoot()), VeskException::UnexpectedElement, "<DataField> is required here!!");
    ExpectAtB(require({}, b), VeskException::UnexpectedElement, "<DataField> is required here!!");
}

TEST(RefusalTable, HasForEachRefusalACodeAMessageAndAdvice) {
    for (const nbscore::RefusalEntry& entry : nbscore::GetRefusals()) {
        EXPECT_FALSE(entry.message.empty());
        EXPECT_TRUE(entry.advice.ends_with('.')) << entry.message;
        const bool isNotice = entry.code == nbscore::noRefusal;
        EXPECT_TRUE(isNotice || entry.code <= VeskException::InconsistentDocument) << entry.message;
    }
}

TEST(RefusalTable, FillsTheGapsOfAMessageInOrder) {
    EXPECT_EQ(nbscore::FillIn("no gap", {}), "no gap");
    EXPECT_EQ(nbscore::FillIn("{} and {}.", {"{}", "b"}), "{} and b.");
}

}  // namespace
