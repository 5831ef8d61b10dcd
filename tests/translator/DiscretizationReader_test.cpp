#include "translator/ElementReaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "support/XmlName.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

struct Discretization {
    std::unique_ptr<NBinningEncoder> encoder;
    ParseOutcome outcome;

    std::string Dump() const { return encoder ? DumpOf(*encoder) : "refused: " + outcome.refusal->GetMessage(); }
};

/// Reads the bins of a document that is nothing but a DerivedField.
Discretization Read(const std::string& text, const BaseTranslator& translator = NaiveBayesTranslator("")) {
    Discretization read;
    read.outcome = VisitDocument(text, [&](const DocumentTree& document, const Transcoder& transcoder) {
        read.encoder = ReadDiscretization(translator, transcoder, document.GetRoot(), {});
    });
    return read;
}

std::string Bin(const std::string& margins) {
    return "\n<DiscretizeBin binValue=\"bin\">\n<Interval " + margins + "/></DiscretizeBin>";
}
std::string Field(const std::string& bins) {
    return "<DerivedField name=\"binned\">\n<Discretize field=\"x\">" + bins + "\n</Discretize></DerivedField>";
}
std::string Cutpoints(const std::vector<double>& cutpoints) {
    return DumpOf(NBinningEncoder(cutpoints));
}

const std::string intervalPath = "/DerivedField/Discretize[1]/DiscretizeBin[2]/Interval[1]";

TEST(DiscretizationReader, TakesTheMarginsBetweenBins) {
    EXPECT_EQ(
        Read(Field(Bin("rightMargin='1'") + Bin("leftMargin='1' rightMargin='5'") + Bin("leftMargin='5'"))).Dump(),
        Cutpoints({1, 5}));
}

TEST(DiscretizationReader, TakesNoNoticeOfTheOuterMargins) {
    EXPECT_EQ(Read(Field(Bin("leftMargin='-7' rightMargin='1'") + Bin("leftMargin='1' rightMargin='9'"))).Dump(),
              Cutpoints({1}));
    EXPECT_EQ(Read(Field(Bin("leftMargin='rubbish' rightMargin='1'") + Bin("leftMargin='1'"))).Dump(), Cutpoints({1}));
}

TEST(DiscretizationReader, TakesNoNoticeOfTheClosure) {
    for (const std::string closure : {"openClosed", "openOpen", "closedOpen", "closedClosed", "nonsense"}) {
        EXPECT_EQ(Read(Field(Bin("closure='" + closure + "' rightMargin='1'") +
                             Bin("closure='" + closure + "' leftMargin='1'")))
                      .Dump(),
                  Cutpoints({1}));
    }
}

TEST(DiscretizationReader, TakesDescendingBinsAsTheyStand_WhenTheyMeet) {
    EXPECT_EQ(
        Read(Field(Bin("rightMargin='5'") + Bin("leftMargin='5' rightMargin='1'") + Bin("leftMargin='1'"))).Dump(),
        Cutpoints({5, 1}));
}

TEST(DiscretizationReader, ComparesMarginsAsNumbers) {
    EXPECT_EQ(Read(Field(Bin("rightMargin=' 1.50 '") + Bin("leftMargin='15e-1'"))).Dump(), Cutpoints({1.5}));
}

TEST(DiscretizationReader, KeepsTheEarlierMargins_WhenMarginsAreAbsent) {
    // The right margin stays 1 through the second bin, and the left margin stays 1 in the third.
    EXPECT_EQ(Read(Field(Bin("rightMargin='1'") + Bin("leftMargin='1'") + Bin(""))).Dump(), Cutpoints({1, 1}));
    EXPECT_EQ(Read(Field(Bin("rightMargin='1'") + Bin("leftMargin='1' rightMargin=''") + Bin("leftMargin='1'"))).Dump(),
              Cutpoints({1, 1}));
    // Nothing given at all: both are the lowest number.
    EXPECT_EQ(Read(Field(Bin("") + Bin(""))).Dump(), Cutpoints({std::numeric_limits<double>::lowest()}));
}

TEST(DiscretizationReader, Refuses_WhenMarginsDoNotMeet) {
    for (const std::string& bins :
         {Bin("rightMargin='1'") + Bin("leftMargin='1.5'"), Bin("rightMargin='1'") + Bin("leftMargin='0.5'"),
          Bin("rightMargin='1'") + Bin("rightMargin='2'"), Bin("") + Bin("leftMargin='1'")}) {
        const std::string text = Field(bins);
        ASSERT_TRUE(Read(text).outcome.refusal) << bins;
        EXPECT_EQ(Read(text).outcome.refusal->GetCode(), 12);
        EXPECT_EQ(Read(text).outcome.refusal->GetMessage(), "Error in Interval margins.");
        EXPECT_EQ(Read(text).outcome.refusal->GetPlace().elementPath, intervalPath);
        EXPECT_EQ(Read(text).outcome.refusal->GetPlace().line, 6u);
    }
}

TEST(DiscretizationReader, RefusesAMargin_WhenItIsNoNumber) {
    for (const std::string& bins :
         {Bin("rightMargin='1'") + Bin("leftMargin=''"), Bin("rightMargin='1'") + Bin("leftMargin='NaN'"),
          Bin("rightMargin='1'") + Bin("leftMargin='1' rightMargin='INF'")}) {
        const ParseOutcome outcome = Read(Field(bins)).outcome;
        ASSERT_TRUE(outcome.refusal) << bins;
        EXPECT_EQ(outcome.refusal->GetCode(), 9);
        EXPECT_EQ(outcome.refusal->GetPlace().elementPath, intervalPath);
        EXPECT_EQ(outcome.refusal->GetPlace().line, 6u);
    }
}

TEST(DiscretizationReader, Refuses_WhenThereAreFewerThanTwoBins) {
    for (const std::string& text : {Field(""), Field(Bin("leftMargin='1' rightMargin='2'"))}) {
        EXPECT_TRUE(IsRefusedAs(Read(text).outcome, text,
                                {5, "NaiveBayesTranslator::ParseDiscretize: cutpoints found", "<Discretize ",
                                 "/DerivedField/Discretize[1]"}));
    }
}

TEST(DiscretizationReader, Refuses_WhenTheFieldHoldsNoDiscretize) {
    const std::string message = "Element Discretize was expected here.";
    EXPECT_TRUE(IsRefusedAs(Read("<DerivedField/>").outcome, "<DerivedField/>",
                            {1, message, "<DerivedField", "/DerivedField"}));
    const std::string text = "<DerivedField>\n<Extension/><Discretize/></DerivedField>";
    EXPECT_TRUE(IsRefusedAs(Read(text).outcome, text, {1, message, "<Extension", "/DerivedField/Extension[1]"}));
}

TEST(DiscretizationReader, Refuses_WhenAChildIsNoBin) {
    const std::string text = Field(Bin("rightMargin='1'") + "\n<Extension/>");
    EXPECT_TRUE(IsRefusedAs(
        Read(text).outcome, text,
        {1, "Element DiscretizeBin was expected here.", "<Extension", "/DerivedField/Discretize[1]/Extension[1]"}));
}

TEST(DiscretizationReader, Refuses_WhenABinHoldsNoInterval) {
    const std::string message = "Element Interval was expected here.";
    const std::string binPath = "/DerivedField/Discretize[1]/DiscretizeBin[1]";
    const std::string empty = Field("\n<DiscretizeBin/>");
    EXPECT_TRUE(IsRefusedAs(Read(empty).outcome, empty, {1, message, "<DiscretizeBin", binPath}));
    const std::string other = Field("\n<DiscretizeBin>\n<Extension/><Interval/></DiscretizeBin>");
    EXPECT_TRUE(IsRefusedAs(Read(other).outcome, other, {1, message, "<Extension", binPath + "/Extension[1]"}));
}

TEST(DiscretizationReader, NamesTheElementOnStandardError_WhenItIsNoDerivedField) {
    testing::internal::CaptureStderr();
    const ParseOutcome outcome = Read("<Feld-\xC3\xA4/>").outcome;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Element DerivedField not found in ParseDiscretize\nThe element is Feld-\xC3\xA4\n");
    EXPECT_TRUE(IsRefusedAs(outcome, "<Feld-\xC3\xA4/>",
                            {6, "Element DerivedField was expected here.", "<Feld", "/Feld-\xC3\xA4"}));
}

TEST(DiscretizationReader, GivesTheNoticeToWhoTakesIt_AndNothingToStandardError) {
    NaiveBayesTranslator translator("");
    std::vector<std::string> notices;
    translator.SetNotices([&notices](const std::string& text, const DocumentPlace& place, std::string_view advice) {
        notices.push_back(std::to_string(place.line) + ":" + std::to_string(place.column) + " " + place.elementPath +
                          " " + text);
        EXPECT_EQ(advice, GetRefusal(Refusal::BinningExpectedNotice).advice);
    });
    testing::internal::CaptureStderr();
    const ParseOutcome outcome = Read("\n <Feld-\xC3\xA4/>", translator).outcome;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_THAT(notices, testing::ElementsAre("2:2 /Feld-\xC3\xA4 The first element in the BayesInput of a continuous "
                                              "field is <Feld-\xC3\xA4>."));
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 6);

    translator.SetNotices(nullptr);
    testing::internal::CaptureStderr();
    Read("<other/>", translator);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(DiscretizationReader, RefusesNothingAtAll_ThroughTheTranslator) {
    NaiveBayesTranslator translator("");
    translator.CreateTranscoder("UTF-8");
    testing::internal::CaptureStderr();
    const ParseOutcome outcome = OutcomeOf([&]() -> ScoreModel* {
        const std::unique_ptr<NBinningEncoder> encoder(NaiveBayesTranslator::ParseDiscretize(translator, nullptr));
        return nullptr;
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Element DerivedField not found in ParseDiscretize\nThe element is \n");
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 6);
}

TEST(DiscretizationReader, GivesAnEncoderToTheCaller_ThroughTheTranslator) {
    NaiveBayesTranslator translator("");
    translator.CreateTranscoder("UTF-8");
    std::unique_ptr<NBinningEncoder> encoder;
    VisitDom(Field(Bin("rightMargin='1'") + Bin("leftMargin='1'")), [&](xercesc::DOMDocument& document) {
        encoder.reset(NaiveBayesTranslator::ParseDiscretize(translator, document.getDocumentElement()));
    });
    ASSERT_TRUE(encoder);
    EXPECT_EQ(DumpOf(*encoder), Cutpoints({1}));
}

TEST(DiscretizationReader, TakesTextsAsUtf8_WhenTheTranslatorHasNoTranscoderYet) {
    const NaiveBayesTranslator translator("");
    std::unique_ptr<NBinningEncoder> encoder;
    VisitDom(Field(Bin("rightMargin='1'") + Bin("leftMargin='1'")), [&](xercesc::DOMDocument& document) {
        encoder.reset(NaiveBayesTranslator::ParseDiscretize(translator, document.getDocumentElement()));
    });
    ASSERT_TRUE(encoder);
    EXPECT_EQ(DumpOf(*encoder), Cutpoints({1}));
}

TEST(DiscretizationReader, RefusesAnotherElement_WhenItsNameIsBroken) {
    const XMLCh half[] = {'a', 0xD83D, 0};
    const ParseOutcome outcome = VisitDom("<a/>", [&](xercesc::DOMDocument& document) {
        document.setXmlVersion(XmlName("1.1"));
        const auto* broken = document.createElement(half);
        testing::internal::CaptureStderr();
        NaiveBayesTranslator::ParseDiscretize(NaiveBayesTranslator(""), broken);
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Element DerivedField not found in ParseDiscretize\nThe element is a\xEF\xBF\xBD\n");
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 6);
}

}  // namespace
}  // namespace nbscore::test
