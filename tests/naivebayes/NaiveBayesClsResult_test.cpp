#include "naivebayes/NaiveBayesClsResult.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "CountedValue.h"
#include "ModelParts.h"
#include "support/InThreads.h"

namespace {

using nbscore::test::CountedValue;
using nbscore::test::InThreads;
using nbscore::test::TextVariable;

TEST(NaiveBayesClsResult, HoldsNothing_WhenNew) {
    const auto target = TextVariable("play", {"yes", "no"});
    NaiveBayesClsResult result(target.get());
    const StringValue any("yes");
    EXPECT_EQ(result.GetTarget(), target.get());
    EXPECT_EQ(result.GetPrediction(), nullptr);
    EXPECT_EQ(result.GetConfidence(), -1.0);
    EXPECT_EQ(result.GetPercent(&any), -1.0);
    EXPECT_TRUE(result.GetAllValuePercent().empty());
    EXPECT_TRUE(result.GetAdvice().empty());
    EXPECT_EQ(result.GetScoreResultType(), 10);
}

TEST(NaiveBayesClsResult, MayHaveNoTarget) {
    EXPECT_EQ(NaiveBayesClsResult(nullptr).GetTarget(), nullptr);
}

TEST(NaiveBayesClsResult, KeepsOneEntryPerCategory_WhenACategoryComesTwice) {
    NaiveBayesClsResult result(nullptr);
    StringValue yes("yes");
    StringValue no("no");
    StringValue yesAgain("yes");
    EXPECT_TRUE(result.AddValuePercent(&yes, 0.25));
    EXPECT_TRUE(result.AddValuePercent(&no, 0.75));
    EXPECT_TRUE(result.AddValuePercent(&yesAgain, 0.5));
    ASSERT_EQ(result.GetAllValuePercent().size(), 2u);
    EXPECT_EQ(result.GetAllValuePercent()[0], ScoreClsResult::ValuePercent(&yes, 0.5));
    EXPECT_EQ(result.GetAllValuePercent()[1], ScoreClsResult::ValuePercent(&no, 0.75));
    EXPECT_EQ(result.GetPercent(&yesAgain), 0.5);
    EXPECT_EQ(result.GetPercent(&no), 0.75);
}

TEST(NaiveBayesClsResult, KnowsNoPercent_WhenTheCategoryWasNeverAdded) {
    NaiveBayesClsResult result(nullptr);
    NumericValue one(1);
    const StringValue text("1");
    result.AddValuePercent(&one, 0.5);
    EXPECT_EQ(result.GetPercent(&text), -1.0);
    EXPECT_EQ(result.GetPercent(nullptr), -1.0);
}

TEST(NaiveBayesClsResult, LeavesTheValuesAlive_WhenTheListIsEmptied) {
    int alive = 0;
    CountedValue category(alive);
    NaiveBayesClsResult result(nullptr);
    result.AddValuePercent(&category, 0.5);
    result.RemoveValuePercent();
    EXPECT_TRUE(result.GetAllValuePercent().empty());
    EXPECT_EQ(result.GetPercent(&category), -1.0);
    EXPECT_EQ(alive, 1);
    result.AddValuePercent(&category, 0.75);
    EXPECT_EQ(result.GetPercent(&category), 0.75);
}

TEST(NaiveBayesClsResult, KeepsAdviceInTheOrderAdded_UntilRemoved) {
    NaiveBayesClsResult result(nullptr);
    result.AddAdvice(ResultAdvice(1, "first"));
    result.AddAdvice(ResultAdvice(2, "second"));
    ASSERT_EQ(result.GetAdvice().size(), 2u);
    EXPECT_EQ(result.GetAdvice()[0].GetText(), "first");
    EXPECT_EQ(result.GetAdvice()[1].GetCode(), 2);
    result.RemoveAdvice();
    EXPECT_TRUE(result.GetAdvice().empty());
}

TEST(NaiveBayesClsResult, DeletesItsPrediction_AndNoCategory) {
    int predictions = 0;
    int categories = 0;
    CountedValue category(categories);
    {
        NaiveBayesClsResult result(nullptr);
        result.SetPrediction(new CountedValue(predictions));
        result.AddValuePercent(&category, 0.5);
        EXPECT_EQ(predictions, 1);
    }
    EXPECT_EQ(predictions, 0);
    EXPECT_EQ(categories, 1);
}

TEST(NaiveBayesClsResult, ForgetsAPredictionWithoutDeletingIt_WhenAnotherIsSet) {
    int alive = 0;
    const std::unique_ptr<ScoreValue> first = std::make_unique<CountedValue>(alive);
    NaiveBayesClsResult result(nullptr);
    result.SetPrediction(first.get());
    result.SetPrediction(new CountedValue(alive));
    EXPECT_EQ(alive, 2);
    EXPECT_NE(result.GetPrediction(), first.get());
}

TEST(NaiveBayesClsResult, CopyHasAPredictionOfItsOwn) {
    int alive = 0;
    StringValue yes("yes");
    const auto target = TextVariable("play", {"yes"});
    {
        NaiveBayesClsResult source(target.get());
        source.SetPrediction(new CountedValue(alive));
        source.SetConfidence(0.5);
        source.AddValuePercent(&yes, 0.25);
        source.AddAdvice(ResultAdvice(7, "seven"));

        NaiveBayesClsResult copy(source);
        EXPECT_EQ(alive, 2);
        EXPECT_NE(copy.GetPrediction(), source.GetPrediction());
        EXPECT_EQ(copy.GetPrediction()->GetString(), "counted");
        EXPECT_EQ(copy.GetTarget(), target.get());
        EXPECT_EQ(copy.GetConfidence(), 0.5);
        EXPECT_EQ(copy.GetAllValuePercent(), source.GetAllValuePercent());
        EXPECT_EQ(copy.GetAdvice().at(0).GetCode(), 7);

        copy.AddValuePercent(&yes, 0.75);
        EXPECT_EQ(source.GetPercent(&yes), 0.25);
    }
    EXPECT_EQ(alive, 0);
}

TEST(NaiveBayesClsResult, DeletesWhatItHad_WhenAssignedTo) {
    int before = 0;
    int after = 0;
    {
        NaiveBayesClsResult source(nullptr);
        source.SetPrediction(new CountedValue(after));
        NaiveBayesClsResult assigned(nullptr);
        assigned.SetPrediction(new CountedValue(before));
        EXPECT_EQ(&(assigned = source), &assigned);
        EXPECT_EQ(before, 0);
        EXPECT_EQ(after, 2);
    }
    EXPECT_EQ(after, 0);
}

TEST(NaiveBayesClsResult, StaysAsItIs_WhenAssignedToItself) {
    int alive = 0;
    StringValue yes("yes");
    NaiveBayesClsResult result(nullptr);
    result.SetPrediction(new CountedValue(alive));
    result.AddValuePercent(&yes, 0.25);
    const NaiveBayesClsResult& same = result;
    result = same;
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(result.GetPrediction()->GetString(), "counted");
    EXPECT_EQ(result.GetPercent(&yes), 0.25);
}

TEST(NaiveBayesClsResult, HasNoPrediction_WhenCopiedFromOneWithout) {
    NaiveBayesClsResult source(nullptr);
    NaiveBayesClsResult copy(source);
    NaiveBayesClsResult assigned(nullptr);
    assigned.SetPrediction(new StringValue("old"));
    assigned = source;
    EXPECT_EQ(copy.GetPrediction(), nullptr);
    EXPECT_EQ(assigned.GetPrediction(), nullptr);
}

TEST(NaiveBayesClsResult, FindsEveryCategory_WhenCopiedOrMovedWithALongList) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    NaiveBayesClsResult source(nullptr);
    for (int i = 0; i < 200; ++i) {
        values.push_back(std::make_unique<StringValue>(std::to_string(i)));
        source.AddValuePercent(values.back().get(), i);
    }
    NaiveBayesClsResult copy(source);
    NaiveBayesClsResult moved(std::move(source));
    for (int i = 199; i >= 0; --i) {
        const StringValue category(std::to_string(i));
        EXPECT_EQ(copy.GetPercent(&category), i);
        EXPECT_EQ(moved.GetPercent(&category), i);
        copy.AddValuePercent(values[static_cast<std::size_t>(i)].get(), -i);
    }
    EXPECT_EQ(copy.GetAllValuePercent().size(), 200u);
    EXPECT_EQ(copy.GetAllValuePercent()[150].second, -150);
}

TEST(NaiveBayesClsResult, MayBeReadByManyThreads) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    NaiveBayesClsResult result(nullptr);
    for (int i = 0; i < 100; ++i) {
        values.push_back(std::make_unique<NumericValue>(i));
        result.AddValuePercent(values.back().get(), i);
    }
    const std::vector<int> found = InThreads([&result](int) {
        int count = 0;
        for (int i = 0; i < 100; ++i) {
            const NumericValue value(i);
            if (result.GetPercent(&value) == i) ++count;
        }
        return count;
    });
    EXPECT_EQ(found, std::vector<int>(found.size(), 100));
}

}  // namespace
