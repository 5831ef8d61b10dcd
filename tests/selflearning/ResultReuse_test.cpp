#include <gtest/gtest.h>

#include "framework/DeathWatch.h"
#include "naivebayes/CountedValue.h"
#include "naivebayes/ForeignResult.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "selflearning/SetParts.h"

namespace {

using nbscore::test::CountedValue;
using nbscore::test::DescriptorList;
using nbscore::test::Descriptors;
using nbscore::test::ForeignResult;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

std::unique_ptr<SelfLearningModel> Weather() {
    return MakeSet(TextVariable("play", {"yes", "no"}),
                   {{"a", 0.5, {3, 1}, {{"x", {"p", "q"}, {{1, 5}, {5, 1}}}}}, {"b", 0.5, {3, 1}, {}}});
}

/// Scores a case of the one predictor; takes the result over and gives back what it became.
std::unique_ptr<ScoreResult> ScoreInto(SelfLearningModel& set, const std::string& x,
                                       std::unique_ptr<ScoreResult> result) {
    ScoreResult* raw = result.release();
    const NamedRecord record = TextRecord({{"x", x}});
    set.GetScore(&record, raw, false);
    return std::unique_ptr<ScoreResult>(raw);
}

double FirstScore(const ScoreResult& result) {
    return Descriptors(result).at(0).score;
}

double ScoreOf(const std::string& x) {
    return FirstScore(*ScoreInto(*Weather(), x, nullptr));
}

TEST(SelfLearningResultReuse, MakesAResultOfTheTarget_WhenThereIsNone) {
    const auto target = TextVariable("play", {"yes", "no"});
    SelfLearningModel set;
    set.SetTargetVar(target.get());
    const auto result = ScoreInto(set, "p", nullptr);
    ASSERT_NE(dynamic_cast<const SelfLearningResult*>(result.get()), nullptr);
    EXPECT_EQ(result->GetTarget(), target.get());
    EXPECT_EQ(result->GetConfidence(), -1.0);
    EXPECT_TRUE(result->GetAdvice().empty());
}

TEST(SelfLearningResultReuse, ReplacesAResultOfItsOwnTypeEveryTime) {
    const auto set = Weather();
    int alive = 0;
    for (int i = 0; i < 2; ++i) {
        bool destroyed = false;
        auto own = std::make_unique<DeathWatch<SelfLearningResult>>(destroyed, nullptr);
        own->SetPrediction(new CountedValue(alive));
        own->AddAdvice(ResultAdvice(1, "gone"));
        own->SetConfidence(0.5);
        auto result = ScoreInto(*set, "p", std::move(own));
        EXPECT_TRUE(destroyed);
        EXPECT_EQ(alive, 0);
        EXPECT_TRUE(result->GetAdvice().empty());
        EXPECT_EQ(result->GetConfidence(), -1.0);
        EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
        // What was just made is replaced as well.
        result->SetConfidence(0.5);
        result = ScoreInto(*set, "q", std::move(result));
        EXPECT_EQ(result->GetConfidence(), -1.0);
        EXPECT_EQ(FirstScore(*result), ScoreOf("q"));
    }
}

TEST(SelfLearningResultReuse, ReplacesAResultOfAnotherType) {
    const auto set = Weather();
    int deletions = 0;
    for (const int type : {0, 11, 25}) {
        const auto result = ScoreInto(*set, "p", std::make_unique<ForeignResult>(type, deletions));
        EXPECT_NE(dynamic_cast<const SelfLearningResult*>(result.get()), nullptr);
        EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
    }
    EXPECT_EQ(deletions, 3);
}

TEST(SelfLearningResultReuse, KeepsAClassificationResult_AndReplacesItsPrediction) {
    const auto set = Weather();
    int alive = 0;
    auto classified = std::make_unique<NaiveBayesClsResult>(nullptr);
    const ScoreResult* object = classified.get();
    classified->SetPrediction(new CountedValue(alive));
    classified->AddAdvice(ResultAdvice(1, "kept"));
    classified->SetConfidence(0.5);
    const auto result = ScoreInto(*set, "p", std::move(classified));
    EXPECT_EQ(result.get(), object);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(result->GetConfidence(), 0.5);
    EXPECT_EQ(result->GetAdvice().size(), 1u);
    EXPECT_EQ(Descriptors(*result).size(), 2u);
    EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
}

TEST(SelfLearningResultReuse, GivesAClassificationResultAPrediction_WhenItHasNone) {
    const auto set = Weather();
    const auto result = ScoreInto(*set, "p", std::make_unique<NaiveBayesClsResult>(nullptr));
    EXPECT_EQ(result->GetScoreResultType(), 10);
    EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
}

TEST(SelfLearningResultReuse, FillsTheListAgain_WhenAKeptResultHasOneAlready) {
    const auto set = Weather();
    auto classified = std::make_unique<NaiveBayesClsResult>(nullptr);
    auto* list = new DescriptorList(std::vector<nbscore::test::Descriptor>(5));
    classified->SetPrediction(list);
    auto result = ScoreInto(*set, "p", std::move(classified));
    EXPECT_EQ(result->GetPrediction(), list);
    EXPECT_EQ(list->Size(), 2);
    EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
    result = ScoreInto(*set, "q", std::move(result));
    EXPECT_EQ(result->GetPrediction(), list);
    EXPECT_EQ(list->Size(), 2);
    EXPECT_EQ(FirstScore(*result), ScoreOf("q"));
}

TEST(SelfLearningResultReuse, ReplacesAListOfAnotherKind) {
    const auto set = Weather();
    auto classified = std::make_unique<NaiveBayesClsResult>(nullptr);
    classified->SetPrediction(new VectorValue<int>({1, 2, 3}));
    const auto result = ScoreInto(*set, "p", std::move(classified));
    EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
}

TEST(SelfLearningResultReuse, KeepsAnyResultThatCallsItselfAClassification) {
    const auto set = Weather();
    int deletions = 0, alive = 0;
    auto foreign = std::make_unique<ForeignResult>(10, deletions);
    const ScoreResult* object = foreign.get();
    foreign->SetPrediction(new CountedValue(alive));
    const auto result = ScoreInto(*set, "p", std::move(foreign));
    EXPECT_EQ(result.get(), object);
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(FirstScore(*result), ScoreOf("p"));
}

}  // namespace
