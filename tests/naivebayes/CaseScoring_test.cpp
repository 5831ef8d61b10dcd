#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ModelParts.h"
#include "ScoredCase.h"

namespace {

using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::NumberVariable;
using nbscore::test::priorNo;
using nbscore::test::priorYes;
using nbscore::test::ScoredCase;
using nbscore::test::ScoreTexts;
using nbscore::test::TextVariable;

constexpr double t = nbscore::test::smallThreshold;

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

TEST(CaseScoring, WorksWithThresholdsThatBreakTheArithmetic) {
    for (const double threshold : {-1.0, 5e-324, 1e308, std::numeric_limits<double>::infinity()}) {
        const auto model = MakeModel(threshold, TextVariable("play", {"yes", "no"}), {3, 1},
                                     {{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}}});
        const ScoredCase scored = ScoreTexts(*model, {{"outlook", "sunny"}});
        EXPECT_EQ(scored.probabilities.size(), 2u);
        EXPECT_TRUE(scored.prediction == "yes" || scored.prediction == "no");
    }
}

}  // namespace
