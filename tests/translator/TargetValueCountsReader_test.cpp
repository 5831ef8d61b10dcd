#include "translator/ElementReaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ReadCounts {
    std::vector<double> counts;
    ParseOutcome outcome;
};

/// Reads the counts of an element with this content.
ReadCounts Read(const std::string& content, INBVeskEncoder* encoder, const TargetValueCountsOptions& options = {}) {
    ReadCounts read;
    read.outcome = VisitDocument("<PairCounts>\n" + content + "\n</PairCounts>", [&](const DocumentTree& document,
                                                                                     const Transcoder& transcoder) {
        LimitWatch watch;
        read.counts = ReadTargetValueCounts(transcoder, document.GetRoot(), encoder, options, watch);
    });
    return read;
}

std::string Entry(const std::string& value, const std::string& count) {
    return "<TargetValueCount value=\"" + value + "\" count=\"" + count + "\"/>\n";
}
std::string Entries(const std::string& entries) {
    return "<TargetValueCounts>\n" + entries + "</TargetValueCounts>";
}

TEST(TargetValueCountsReader, OrdersCountsByCategory) {
    NBCatStringEncoder encoder(std::vector<std::string>{"yes", "no", "maybe"});
    EXPECT_THAT(Read(Entries(Entry("maybe", "3") + Entry("yes", "1") + Entry("no", "2")), &encoder).counts,
                ElementsAre(1, 2, 3));
}

TEST(TargetValueCountsReader, PassesOverAValue_WhenItIsNoCategory) {
    NBCatStringEncoder encoder(std::vector<std::string>{"yes", "no"});
    EXPECT_THAT(Read(Entries(Entry("YES", "9") + Entry("no", "2")), &encoder).counts, ElementsAre(0, 2));
    EXPECT_EQ(encoder.GetNumCategories(), 2);
}

TEST(TargetValueCountsReader, DoesNotLookAtTheCount_WhenTheValueIsNoCategory) {
    NBCatStringEncoder encoder(std::vector<std::string>{"yes", "no"});
    const ReadCounts read = Read(
        Entries(Entry("other", "rubbish") + "<TargetValueCount value=\"another\"/>" + Entry("yes", "1")), &encoder);
    EXPECT_FALSE(read.outcome.refusal);
    EXPECT_THAT(read.counts, ElementsAre(1, 0));
}

TEST(TargetValueCountsReader, TakesTheLastCount_WhenAValueIsRepeated) {
    NBCatNumericEncoder encoder(std::vector<double>{1, 2});
    EXPECT_THAT(Read(Entries(Entry("1", "5") + Entry("1.0", "7")), &encoder).counts, ElementsAre(7, 0));
}

TEST(TargetValueCountsReader, StaysEmpty_WhenAOneCategoryTargetIsNotCounted) {
    NBCatStringEncoder encoder(std::vector<std::string>{"only"});
    EXPECT_THAT(Read(Entries(Entry("other", "1")), &encoder).counts, IsEmpty());
    EXPECT_THAT(Read(Entries(Entry("only", "4")), &encoder).counts, ElementsAre(4));
    EXPECT_THAT(Read(Entries(""), &encoder).counts, IsEmpty());
}

TEST(TargetValueCountsReader, HoldsZeros_WhenThereAreNoEntries) {
    NBCatStringEncoder encoder(std::vector<std::string>{"yes", "no"});
    EXPECT_THAT(Read(Entries(""), &encoder).counts, ElementsAre(0, 0));
}

TEST(TargetValueCountsReader, AddsCategories_WhenToldTo) {
    NBCatStringEncoder encoder(2);
    const TargetValueCountsOptions adding{.addUnknownValues = true};
    EXPECT_THAT(Read(Entries(Entry("b", "1") + Entry("a", "2") + Entry("b", "3")), &encoder, adding).counts,
                ElementsAre(3, 2));
    EXPECT_EQ(encoder.GetCategory("b"), 0);
    EXPECT_THAT(Read(Entries(Entry("c", "4")), &encoder, adding).counts, ElementsAre(0, 0, 4));
}

TEST(TargetValueCountsReader, TakesCountsAsTheyStand_WhenTheyAreNegativeFractionalOrHuge) {
    NBCatStringEncoder encoder(std::vector<std::string>{"a", "b", "c"});
    EXPECT_THAT(Read(Entries(Entry("a", "-3") + Entry("b", "0.25") + Entry("c", "1e300")), &encoder).counts,
                ElementsAre(-3, 0.25, 1e300));
}

TEST(TargetValueCountsReader, RefusesACount_WhenItIsNoFiniteNumber) {
    NBCatStringEncoder encoder(std::vector<std::string>{"a", "b"});
    for (const std::string count : {"NaN", "INF", "inf", "1e999", "0x10", "1,5", "", "ten"}) {
        const std::string content = Entries(Entry("a", count));
        const ReadCounts read = Read(content, &encoder);
        ASSERT_TRUE(read.outcome.refusal) << count;
        EXPECT_EQ(read.outcome.refusal->GetCode(), 9) << count;
        EXPECT_EQ(read.outcome.refusal->GetPlace().line, 3u);
        EXPECT_EQ(read.outcome.refusal->GetPlace().elementPath, "/PairCounts/TargetValueCounts[1]/TargetValueCount[1]");
    }
}

TEST(TargetValueCountsReader, Refuses_WhenValueOrCountIsAbsent) {
    NBCatStringEncoder encoder(std::vector<std::string>{"a", "b"});
    for (const std::string entry : {"<TargetValueCount value=\"a\"/>", "<TargetValueCount count=\"1\"/>"}) {
        const ReadCounts read = Read(Entries(entry), &encoder);
        ASSERT_TRUE(read.outcome.refusal) << entry;
        EXPECT_EQ(read.outcome.refusal->GetCode(), 2) << entry;
        EXPECT_EQ(read.outcome.refusal->GetPlace().line, 3u);
    }
}

TEST(TargetValueCountsReader, KnowsNoValue_WhenThereIsNoTarget) {
    for (const bool adding : {false, true}) {
        EXPECT_THAT(Read(Entries(Entry("a", "1")), nullptr, {.addUnknownValues = adding}).counts, IsEmpty());
    }
}

TEST(TargetValueCountsReader, ReadsValuesAsIndexes_WhenTheTargetIsBinned) {
    NBinningEncoder encoder(std::vector<double>{10});
    EXPECT_THAT(Read(Entries(Entry("3", "7") + Entry("-1", "rubbish") + Entry(" 0 ", "1")), &encoder).counts,
                ElementsAre(1, 0, 0, 7));
    const ReadCounts text = Read(Entries(Entry("1.5", "7")), &encoder);
    ASSERT_TRUE(text.outcome.refusal);
    EXPECT_EQ(text.outcome.refusal->GetCode(), 9);
}

TEST(TargetValueCountsReader, RefusesATargetIndex_WhenItIsAboveAMillion) {
    NBinningEncoder encoder(std::vector<double>{10});
    EXPECT_EQ(Read(Entries(Entry("1000000", "7")), &encoder).counts.size(), 1000001u);
    const std::string content = Entries(Entry("1000001", "7"));
    EXPECT_TRUE(IsRefusedAs(Read(content, &encoder).outcome, "<PairCounts>\n" + content,
                            {12, "Target index 1000001 is above 1000000.", "<TargetValueCount ",
                             "/PairCounts/TargetValueCounts[1]/TargetValueCount[1]"}));
}

TEST(TargetValueCountsReader, Refuses_WhenTheElementIsAnother) {
    NBCatStringEncoder encoder(2);
    const std::string message = "Element <TargetValueCounts> was expected here.";
    EXPECT_TRUE(IsRefusedAs(Read("<Extension/><TargetValueCounts/>", &encoder).outcome, "<PairCounts>\n<Extension/>",
                            {1, message, "<Extension", "/PairCounts/Extension[1]"}));
    EXPECT_TRUE(IsRefusedAs(Read("", &encoder).outcome, "<PairCounts>", {1, message, "<PairCounts", "/PairCounts"}));
}

TEST(TargetValueCountsReader, Refuses_WhenAnEntryIsAnotherElement) {
    NBCatStringEncoder encoder(std::vector<std::string>{"a", "b"});
    const std::string content = Entries(Entry("a", "1") + "<Extension/>");
    EXPECT_TRUE(IsRefusedAs(Read(content, &encoder).outcome, "<PairCounts>\n" + content,
                            {1, "Element <TargetValueCount> was expected here.", "<Extension",
                             "/PairCounts/TargetValueCounts[1]/Extension[1]"}));
}

TEST(TargetValueCountsReader, RefusesASelfLearningOutput_WhenItHasNotOneOrTwoEntries) {
    NBCatStringEncoder encoder(std::vector<std::string>{"a", "b"});
    const TargetValueCountsOptions selfLearningOutput{.selfLearning = true, .outputMode = true};
    EXPECT_THAT(Read(Entries(Entry("b", "1")), &encoder, selfLearningOutput).counts, ElementsAre(0, 1));
    EXPECT_THAT(Read(Entries(Entry("b", "1") + Entry("a", "2")), &encoder, selfLearningOutput).counts,
                ElementsAre(2, 1));
    for (const std::string& entries : {std::string(), Entry("a", "1") + Entry("b", "2") + Entry("unknown", "3")}) {
        const std::string content = Entries(entries);
        EXPECT_TRUE(IsRefusedAs(Read(content, &encoder, selfLearningOutput).outcome, "<PairCounts>\n" + content,
                                {5, "One or Two <TargetValueCounts> elements required!!", "<TargetValueCounts>",
                                 "/PairCounts/TargetValueCounts[1]"}));
        EXPECT_FALSE(Read(content, &encoder, {.selfLearning = true, .outputMode = false}).outcome.refusal);
        EXPECT_FALSE(Read(content, &encoder, {.selfLearning = false, .outputMode = true}).outcome.refusal);
    }
}

}  // namespace
}  // namespace nbscore::test
