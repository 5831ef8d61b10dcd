#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>

#include "CountedEncoder.h"
#include "ModelParts.h"
#include "ScoredCase.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "naivebayes/NaiveBayesClsResult.h"

namespace {

using nbscore::test::ContinuousVariable;
using nbscore::test::CountedEncoder;
using nbscore::test::DisplayText;
using nbscore::test::FailingRecord;
using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::NumberVariable;
using nbscore::test::Score;
using nbscore::test::ScoredCase;
using nbscore::test::ScoreTexts;
using nbscore::test::TextVariable;

constexpr double t = 0.001;
const double priorYes = (t + 3) / (2 * t + 1 / t);
const double priorNo = (t + 1) / (2 * t + 1 / t);

std::unique_ptr<NaiveBayesModel> Weather() {
    return MakeModel(
        t, TextVariable("play", {"yes", "no"}), {3, 1},
        {{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}}, {"windy", {"true", "false"}, {{1, 1}, {2, 0}}}});
}

TEST(CaseScoring, MultipliesAndNormalises) {
    const auto model = Weather();
    const ScoredCase scored = ScoreTexts(*model, {{"outlook", "sunny"}, {"windy", "true"}});
    const double yes = priorYes * ((t + 1) / (2 * t + 3)) * ((t + 1) / (2 * t + 3));
    const double no = priorNo * ((t + 1) / (2 * t + 1)) * ((t + 1) / (2 * t + 1));
    EXPECT_EQ(scored.probabilities, (std::vector<double>{yes / (yes + no), no / (yes + no)}));
    EXPECT_EQ(scored.prediction, "no");
    EXPECT_EQ(scored.confidence, no / (yes + no));
}

TEST(CaseScoring, LeavesAPredictorOut_WhenItsValueIsAbsentOrUnknown) {
    const auto model = Weather();
    const double yes = priorYes * ((t + 2) / (2 * t + 3));
    const double no = priorNo * ((t + 0) / (2 * t + 1));
    const std::vector<double> expected{yes / (yes + no), no / (yes + no)};
    EXPECT_EQ(ScoreTexts(*model, {{"outlook", "rain"}}).probabilities, expected);
    EXPECT_EQ(ScoreTexts(*model, {{"outlook", "rain"}, {"windy", "perhaps"}}).probabilities, expected);
    EXPECT_EQ(ScoreTexts(*model, {{"outlook", "rain"}, {"unheard of", "x"}}).probabilities, expected);
}

TEST(CaseScoring, AnswersThePriorsAsTheyStand_WhenNoPredictorIsUsable) {
    const auto model = Weather();
    const ScoredCase absent = ScoreTexts(*model, {});
    EXPECT_EQ(absent.probabilities, (std::vector<double>{priorYes, priorNo}));
    EXPECT_EQ(absent.confidence, priorYes);
    EXPECT_EQ(absent.prediction, "yes");
    EXPECT_EQ(ScoreTexts(*model, {{"outlook", "hail"}}).probabilities, absent.probabilities);
}

TEST(CaseScoring, ReadsByPositionWhateverTheRecordsOrder_WhenTheRecordIsIndexed) {
    const auto model = Weather();
    BaseCaseRecord record({"id", "windy", "outlook"});
    record.SetText(0, "7");
    record.SetText(1, "true");
    record.SetText(2, "sunny");
    EXPECT_NE(DisplayText(*model).find("Dict var index set up? False\n"), std::string::npos);
    const ScoredCase indexed = Score(*model, record);
    EXPECT_NE(DisplayText(*model).find("Dict var index set up? True\n"), std::string::npos);
    const ScoredCase named = ScoreTexts(*model, {{"outlook", "sunny"}, {"windy", "true"}});
    EXPECT_EQ(indexed.probabilities, named.probabilities);
}

TEST(CaseScoring, KeepsThePositionsOfTheFirstIndexedRecord) {
    const auto model = Weather();
    BaseCaseRecord first({"windy", "outlook"});
    Score(*model, first);
    BaseCaseRecord swapped({"outlook", "windy"});
    swapped.SetText(0, "sunny");
    swapped.SetText(1, "true");
    // Each is looked up where the other one stands, and no value is known there.
    EXPECT_EQ(Score(*model, swapped).probabilities, (std::vector<double>{priorYes, priorNo}));
}

TEST(CaseScoring, DoesNotSetPositionsUp_WhenTheFirstRecordIsNotIndexed) {
    const auto model = Weather();
    ScoreTexts(*model, {{"outlook", "rain"}});
    EXPECT_NE(DisplayText(*model).find("Dict var index set up? False\n"), std::string::npos);
}

TEST(CaseScoring, TakesPositionsFromALaterRecord_WhenTheFirstHasNone) {
    const auto model = Weather();
    ScoreTexts(*model, {{"outlook", "rain"}});
    BaseCaseRecord record({"id", "windy", "outlook"});
    record.SetText(1, "true");
    record.SetText(2, "sunny");
    const ScoredCase indexed = Score(*model, record);
    EXPECT_NE(DisplayText(*model).find("Dict var index set up? True\n"), std::string::npos);
    EXPECT_EQ(indexed.probabilities, ScoreTexts(*model, {{"outlook", "sunny"}, {"windy", "true"}}).probabilities);
    EXPECT_NE(indexed.probabilities, ScoreTexts(*model, {}).probabilities);
}

TEST(CaseScoring, LeavesPositionsToTheNextCase_WhenNotingThemFails) {
    const auto model = Weather();
    EXPECT_THROW(Score(*model, FailingRecord({"windy", "outlook"})), std::bad_alloc);
    EXPECT_NE(DisplayText(*model).find("Dict var index set up? False\n"), std::string::npos);
    BaseCaseRecord record({"id", "windy", "outlook"});
    record.SetText(1, "true");
    record.SetText(2, "sunny");
    EXPECT_EQ(Score(*model, record).probabilities,
              ScoreTexts(*model, {{"outlook", "sunny"}, {"windy", "true"}}).probabilities);
}

TEST(CaseScoring, ReadsAbsent_WhenTheRecordDoesNotKnowAPredictor) {
    const auto model = Weather();
    BaseCaseRecord record({"outlook"});
    record.SetText(0, "rain");
    EXPECT_EQ(Score(*model, record).probabilities, ScoreTexts(*model, {{"outlook", "rain"}}).probabilities);
}

TEST(CaseScoring, SetsPositionsUp_WhenTheModelHasNoDictionary) {
    NaiveBayesModel model;
    const auto target = TextVariable("play", {"yes"});
    model.SetThreshold(1);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1});
    EXPECT_EQ(Score(model, BaseCaseRecord({"a"})).prediction, "yes");
}

TEST(CaseScoring, AnswersNaN_WhenTheSumIsZero) {
    const auto model = MakeModel(0, TextVariable("play", {"yes", "no"}), {3, 1}, {{"x", {"a"}, {{1, 1}}}});
    const ScoredCase scored = ScoreTexts(*model, {{"x", "a"}});
    EXPECT_TRUE(std::isnan(scored.probabilities[0]));
    EXPECT_TRUE(std::isnan(scored.probabilities[1]));
    EXPECT_TRUE(std::isnan(scored.confidence));
    EXPECT_EQ(scored.prediction, "yes");
    EXPECT_EQ(ScoreTexts(*model, {}).probabilities, (std::vector<double>{0, 0}));
}

TEST(CaseScoring, DecidesTiesByTheTargetCounts) {
    // Equal priors for categories 1 and 2 cannot come from different counts, so a predictor evens them out.
    const auto model =
        MakeModel(1, TextVariable("y", {"a", "b", "c"}), {1, 3, 7}, {{"x", {"p", "q"}, {{0, 7, 3}, {7, 0, 4}}}});
    const ScoredCase scored = ScoreTexts(*model, {{"x", "p"}});
    EXPECT_EQ(scored.probabilities[1], scored.probabilities[2]);
    EXPECT_EQ(scored.prediction, "c");
}

TEST(CaseScoring, PredictsANumber_WhenTheTargetIsNumeric) {
    const auto model = MakeModel(t, NumberVariable("y", {1.5, 2}), {3, 1}, {});
    ScoreResult* result = nullptr;
    const NamedRecord record;
    model->GetScore(&record, result, false);
    const std::unique_ptr<ScoreResult> owned(result);
    ASSERT_NE(dynamic_cast<const NumericValue*>(result->GetPrediction()), nullptr);
    EXPECT_EQ(result->GetPrediction()->GetDouble(), 1.5);
}

TEST(CaseScoring, SetsThePredictionAlone_WhenOnlyThatIsWanted) {
    const auto model = Weather();
    model->SetPredictionOnly(true);
    const ScoredCase scored = ScoreTexts(*model, {{"outlook", "rain"}});
    EXPECT_EQ(scored.prediction, "yes");
    EXPECT_EQ(scored.confidence, -1.0);
    EXPECT_TRUE(scored.probabilities.empty());
}

/// One predictor with a declared missing value 9 that its encoder knows as a category.
std::unique_ptr<NaiveBayesModel> MissingNine(std::unique_ptr<BaseDictVar> predictor, const BaseDictVar& target) {
    predictor->AddMissingValue(std::make_unique<NumericValue>(9));
    auto model = std::make_unique<NaiveBayesModel>();
    model->SetThreshold(t);
    model->SetTargetVar(&target);
    model->SetTargetCounts({3, 1});
    model->AddPredictorVar("x", predictor.get());
    model->AddEncoder(new NBCatNumericEncoder(std::vector<double>{9, 1}));
    model->SetPredCounts(0, {{1, 5}, {5, 1}});
    auto dictionary = std::make_unique<BaseDictionary>();
    dictionary->AddVar("x", predictor.release());
    model->SetScoreDictionary(dictionary.release());
    return model;
}

TEST(CaseScoring, LeavesAMissingValueOut_OnlyWhenTheVariableIsContinuous) {
    const auto target = TextVariable("play", {"yes", "no"});
    BaseCaseRecord record({"x"});
    record.SetNumber(0, 9);
    const auto continuous = MissingNine(ContinuousVariable("x"), *target);
    EXPECT_EQ(Score(*continuous, record).probabilities, (std::vector<double>{priorYes, priorNo}));
    const auto categorical = MissingNine(NumberVariable("x", {9, 1}), *target);
    EXPECT_NE(Score(*categorical, record).probabilities, (std::vector<double>{priorYes, priorNo}));
}

TEST(CaseScoring, LeavesASystemMissingNumberOut_WhenTheVariableIsBinned) {
    const auto target = TextVariable("play", {"yes", "no"});
    const auto predictor = ContinuousVariable("x");
    NaiveBayesModel model;
    model.SetThreshold(t);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({3, 1});
    model.AddPredictorVar("x", predictor.get());
    model.AddEncoder(new NBinningEncoder(std::vector<double>{10}));
    model.SetPredCounts(0, {{1, 5}, {5, 1}});
    NamedRecord record;
    record.Set("x", std::make_unique<NumericValue>(NumericValue::GetSysmisValue()));
    EXPECT_EQ(Score(model, record).probabilities, (std::vector<double>{priorYes, priorNo}));
    record.Set("x", std::make_unique<NumericValue>(11));
    EXPECT_EQ(Score(model, record).prediction, "yes");
    record.Set("x", std::make_unique<StringValue>("11"));
    EXPECT_EQ(Score(model, record).probabilities, (std::vector<double>{priorYes, priorNo}));
}

TEST(CaseScoring, UsesCodeZero_AndLeavesOutMinusOne) {
    int deletions = 0;
    const auto target = TextVariable("play", {"yes", "no"});
    const auto predictor = TextVariable("x", {});
    for (const int code : {0, -1}) {
        NaiveBayesModel model;
        model.SetThreshold(t);
        model.SetTargetVar(target.get());
        model.SetTargetCounts({3, 1});
        model.AddPredictorVar("x", predictor.get());
        model.AddEncoder(new CountedEncoder(deletions, code));
        model.SetPredCounts(0, {{1, 5}, {5, 1}});
        const bool isPrior = ScoreTexts(model, {{"x", "a"}}).probabilities == std::vector<double>{priorYes, priorNo};
        EXPECT_EQ(isPrior, code < 0);
    }
}

TEST(CaseScoring, WorksWithThresholdsThatBreakTheArithmetic) {
    for (const double threshold : {-1.0, 5e-324, 1e308, std::numeric_limits<double>::infinity()}) {
        const auto model = MakeModel(threshold, TextVariable("play", {"yes", "no"}), {3, 1},
                                     {{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}}});
        const ScoredCase scored = ScoreTexts(*model, {{"outlook", "sunny"}});
        EXPECT_EQ(scored.probabilities.size(), 2u);
        EXPECT_TRUE(scored.prediction == "yes" || scored.prediction == "no");
    }
}

TEST(CaseScoringDeathTest, StopsTheProcess_WhenThereIsNoRecord) {
    const auto model = Weather();
    ScoreResult* result = nullptr;
    EXPECT_DEATH(model->GetScore(nullptr, result, false), "does not exist");
}

}  // namespace
