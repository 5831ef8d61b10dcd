#include <gtest/gtest.h>

#include <new>

#include "CountedValue.h"
#include "ForeignResult.h"
#include "ModelParts.h"
#include "ScoredCase.h"
#include "naivebayes/NaiveBayesClsResult.h"

namespace {

using nbscore::test::CountedValue;
using nbscore::test::ForeignResult;
using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::NumberVariable;
using nbscore::test::Read;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

std::unique_ptr<NaiveBayesModel> Weather() {
    return MakeModel(0.001, TextVariable("play", {"yes", "no"}), {3, 1}, {{"x", {"a", "b"}, {{1, 5}, {5, 1}}}});
}

std::unique_ptr<NaiveBayesModel> NumericTarget() {
    return MakeModel(0.001, NumberVariable("y", {1, 2}), {3, 1}, {{"x", {"a", "b"}, {{1, 5}, {5, 1}}}});
}

/// Scores a case of the one predictor; takes the result over and gives back what it became.
std::unique_ptr<ScoreResult> ScoreInto(NaiveBayesModel& model, const std::string& x,
                                       std::unique_ptr<ScoreResult> result) {
    ScoreResult* raw = result.release();
    const NamedRecord record = TextRecord({{"x", x}});
    model.GetScore(&record, raw, false);
    return std::unique_ptr<ScoreResult>(raw);
}

TEST(ResultReuse, MakesAResultOfTheModelsTarget_WhenThereIsNone) {
    const auto target = TextVariable("play", {"yes", "no"});
    NaiveBayesModel model;
    model.SetThreshold(1);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 1});
    const auto result = ScoreInto(model, "a", nullptr);
    EXPECT_EQ(result->GetTarget(), target.get());
    EXPECT_EQ(result->GetScoreResultType(), 10);
}

TEST(ResultReuse, KeepsResultPredictionAndEntries_WhenAResultIsHandedBack) {
    const auto model = Weather();
    auto result = ScoreInto(*model, "a", nullptr);
    const ScoreResult* object = result.get();
    const ScoreValue* prediction = result->GetPrediction();
    EXPECT_EQ(prediction->GetString(), "no");
    result->AddAdvice(ResultAdvice(1, "kept"));

    result = ScoreInto(*model, "b", std::move(result));
    EXPECT_EQ(result.get(), object);
    EXPECT_EQ(result->GetPrediction(), prediction);
    EXPECT_EQ(prediction->GetString(), "yes");
    EXPECT_EQ(Read(*result).probabilities, Read(*ScoreInto(*model, "b", nullptr)).probabilities);
    EXPECT_EQ(result->GetConfidence(), Read(*result).probabilities[0]);
    EXPECT_EQ(result->GetAdvice().size(), 1u);
}

TEST(ResultReuse, KeepsANumericPrediction_WhenAResultIsHandedBack) {
    const auto model = NumericTarget();
    auto result = ScoreInto(*model, "a", nullptr);
    const ScoreValue* prediction = result->GetPrediction();
    EXPECT_EQ(prediction->GetDouble(), 2);
    result = ScoreInto(*model, "b", std::move(result));
    EXPECT_EQ(result->GetPrediction(), prediction);
    EXPECT_EQ(prediction->GetDouble(), 1);
}

TEST(ResultReuse, DeletesAndReplaces_WhenTheResultIsOfAnotherType) {
    const auto model = Weather();
    int deletions = 0;
    for (const int type : {16, 0, 21}) {
        const auto result = ScoreInto(*model, "a", std::make_unique<ForeignResult>(type, deletions));
        EXPECT_NE(dynamic_cast<const NaiveBayesClsResult*>(result.get()), nullptr);
        EXPECT_EQ(Read(*result).prediction, "no");
    }
    EXPECT_EQ(deletions, 3);
}

TEST(ResultReuse, DeletesAndReplaces_WhenTheResultOnlyClaimsToBeAClassification) {
    const auto model = Weather();
    int deletions = 0;
    const auto result = ScoreInto(*model, "a", std::make_unique<ForeignResult>(10, deletions));
    EXPECT_EQ(deletions, 1);
    EXPECT_EQ(Read(*result).prediction, "no");
}

TEST(ResultReuse, SetsAPrediction_WhenAReusedResultHasNone) {
    const auto model = Weather();
    const auto result = ScoreInto(*model, "a", std::make_unique<NaiveBayesClsResult>(nullptr));
    EXPECT_EQ(result->GetTarget(), nullptr);
    EXPECT_EQ(Read(*result).prediction, "no");
}

TEST(ResultReuse, ReplacesThePrediction_WhenItIsOfAnotherClass) {
    const auto texts = Weather();
    const auto numbers = NumericTarget();
    auto result = ScoreInto(*texts, "a", nullptr);
    const ScoreResult* object = result.get();
    result = ScoreInto(*numbers, "a", std::move(result));
    EXPECT_EQ(result.get(), object);
    EXPECT_NE(dynamic_cast<const NumericValue*>(result->GetPrediction()), nullptr);
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 2);
    result = ScoreInto(*texts, "b", std::move(result));
    EXPECT_NE(dynamic_cast<const StringValue*>(result->GetPrediction()), nullptr);
    EXPECT_EQ(result->GetPrediction()->GetString(), "yes");
}

TEST(ResultReuse, DeletesAPredictionOfAnotherClass) {
    const auto model = NumericTarget();
    int alive = 0;
    auto reused = std::make_unique<NaiveBayesClsResult>(nullptr);
    reused->SetPrediction(new CountedValue(alive));
    const auto result = ScoreInto(*model, "a", std::move(reused));
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 2);
}

TEST(ResultReuse, LeavesConfidenceAndProbabilities_WhenOnlyThePredictionIsWanted) {
    const auto model = Weather();
    auto result = ScoreInto(*model, "a", nullptr);
    const auto before = Read(*result);
    model->SetPredictionOnly(true);
    result = ScoreInto(*model, "b", std::move(result));
    EXPECT_EQ(Read(*result).prediction, "yes");
    EXPECT_EQ(Read(*result).confidence, before.confidence);
    EXPECT_EQ(Read(*result).probabilities, before.probabilities);
}

TEST(ResultReuse, KeepsTheFirstModelsOrder_WhenAnotherModelDeclaresTheSameValues) {
    const auto first = Weather();
    const auto second = MakeModel(0.001, TextVariable("play", {"no", "yes"}), {1, 3}, {});
    auto result = ScoreInto(*first, "a", nullptr);
    result = ScoreInto(*second, "a", std::move(result));
    const auto& entries = dynamic_cast<const ScoreClsResult&>(*result).GetAllValuePercent();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].first->GetString(), "yes");
    EXPECT_EQ(entries[0].second, (0.001 + 3) / (2 * 0.001 + 1 / 0.001));
}

/// A category whose text cannot be had.
class TextlessValue : public StringValue {
public:
    TextlessValue() : StringValue("no") {}
    std::string GetString() const override { throw std::bad_alloc(); }
};

TEST(ResultReuse, LeavesThePredictionToTheResult_WhenANewOneCannotBeMade) {
    NaiveBayesModel model;
    BaseDictVar target("play", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    target.AddValidValue(std::make_unique<TextlessValue>(), "");
    model.SetThreshold(1);
    model.SetTargetVar(&target);
    model.SetTargetCounts({1});
    model.SetPredictionOnly(true);
    NaiveBayesClsResult reused(nullptr);
    reused.SetPrediction(new NumericValue(7));
    ScoreResult* result = &reused;
    const NamedRecord record;
    EXPECT_THROW(model.GetScore(&record, result, false), std::bad_alloc);
    EXPECT_EQ(result, &reused);
    ASSERT_NE(reused.GetPrediction(), nullptr);
    EXPECT_EQ(reused.GetPrediction()->GetDouble(), 7);
}

}  // namespace
