#include "selflearning/SelfLearningResult.h"

#include <gtest/gtest.h>

#include <memory>

#include "naivebayes/CountedValue.h"
#include "naivebayes/ModelParts.h"

namespace {

using nbscore::test::CountedValue;
using nbscore::test::TextVariable;

TEST(SelfLearningResult, HasNothingSet_WhenNew) {
    const auto target = TextVariable("play", {"yes", "no"});
    SelfLearningResult result(target.get());
    EXPECT_EQ(result.GetTarget(), target.get());
    EXPECT_EQ(result.GetPrediction(), nullptr);
    EXPECT_TRUE(result.GetAdvice().empty());
    EXPECT_EQ(result.GetConfidence(), -1.0);
    EXPECT_EQ(result.GetScoreResultType(), 16);
    EXPECT_EQ(SelfLearningResult(nullptr).GetTarget(), nullptr);
}

TEST(SelfLearningResult, DeletesItsPrediction_AndNotItsTarget) {
    int alive = 0;
    const auto target = TextVariable("play", {"yes"});
    {
        SelfLearningResult result(target.get());
        result.SetPrediction(new CountedValue(alive));
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(target->GetName(), "play");
}

TEST(SelfLearningResult, ForgetsItsPredictionUndeleted_WhenGivenAnother) {
    int alive = 0;
    auto* first = new CountedValue(alive);
    {
        SelfLearningResult result(nullptr);
        result.SetPrediction(first);
        EXPECT_EQ(result.GetPrediction(), first);
        auto* second = new CountedValue(alive);
        result.SetPrediction(second);
        EXPECT_EQ(result.GetPrediction(), second);
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 1);
    delete first;
}

TEST(SelfLearningResult, KeepsAdviceInOrder_UntilItIsRemoved) {
    SelfLearningResult result(nullptr);
    result.AddAdvice(ResultAdvice(1, "first"));
    result.AddAdvice(ResultAdvice(2, "second"));
    const std::vector<ResultAdvice> advice = result.GetAdvice();
    ASSERT_EQ(advice.size(), 2u);
    EXPECT_EQ(advice[0].GetText(), "first");
    EXPECT_EQ(advice[1].GetText(), "second");
    result.RemoveAdvice();
    EXPECT_TRUE(result.GetAdvice().empty());
    EXPECT_EQ(advice.size(), 2u);
}

TEST(SelfLearningResult, KeepsItsConfidence) {
    SelfLearningResult result(nullptr);
    result.SetConfidence(0.25);
    EXPECT_EQ(result.GetConfidence(), 0.25);
}

TEST(SelfLearningResult, SharesItsPredictionWithACopy_WhichMustBeRidOfIt) {
    int alive = 0;
    const auto target = TextVariable("play", {"yes"});
    {
        SelfLearningResult result(target.get());
        result.SetPrediction(new CountedValue(alive));
        result.AddAdvice(ResultAdvice(1, "shared"));
        result.SetConfidence(0.75);
        SelfLearningResult copy(result);
        EXPECT_EQ(copy.GetPrediction(), result.GetPrediction());
        EXPECT_EQ(copy.GetTarget(), target.get());
        EXPECT_EQ(copy.GetConfidence(), 0.75);
        ASSERT_EQ(copy.GetAdvice().size(), 1u);
        result.RemoveAdvice();
        EXPECT_EQ(copy.GetAdvice().size(), 1u);
        EXPECT_EQ(alive, 1);
        copy.SetPrediction(nullptr);
        EXPECT_NE(result.GetPrediction(), nullptr);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SelfLearningResult, SharesThePredictionThatIsAssigned_AndLosesItsOwn) {
    int alive = 0;
    auto own = std::make_unique<CountedValue>(alive);
    const auto target = TextVariable("play", {"yes"});
    {
        SelfLearningResult source(target.get());
        source.SetPrediction(new CountedValue(alive));
        source.AddAdvice(ResultAdvice(1, "shared"));
        source.SetConfidence(0.75);
        SelfLearningResult assigned(nullptr);
        assigned.AddAdvice(ResultAdvice(2, "replaced"));
        assigned.SetPrediction(own.get());
        assigned = source;
        EXPECT_EQ(assigned.GetPrediction(), source.GetPrediction());
        EXPECT_EQ(assigned.GetTarget(), target.get());
        EXPECT_EQ(assigned.GetConfidence(), 0.75);
        ASSERT_EQ(assigned.GetAdvice().size(), 1u);
        EXPECT_EQ(assigned.GetAdvice()[0].GetText(), "shared");
        assigned.SetPrediction(nullptr);
    }
    EXPECT_EQ(alive, 1);
}

}  // namespace
