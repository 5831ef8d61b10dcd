#include <gtest/gtest.h>

#include "StandardParts.h"

namespace nbscore::test {
namespace {

std::unique_ptr<BaseDictVar> YesOrNo() {
    return TextVariable("answer", {"yes", "no"});
}

const StandardInput colour = Texts("colour", {"red", "blue"}, {{2, 0}, {1, 1}});

ScoringObstacle ObstacleOf(std::unique_ptr<BaseDictVar> target, const std::vector<double>& counts,
                           const std::vector<StandardInput>& inputs) {
    return MakeStandardModel(0, std::move(target), counts, inputs)->FindScoringObstacle();
}

TEST(StandardObstacle, IsNone_WhenAllFitsTogether) {
    EXPECT_FALSE(ObstacleOf(YesOrNo(), {1, 1}, {}));
    EXPECT_FALSE(ObstacleOf(YesOrNo(), {1, 1}, {colour, Densities("x", {{}, {}})}));
}

TEST(StandardObstacle, IsTheTarget) {
    EXPECT_EQ(StandardModel().FindScoringObstacle().kind, ScoringObstacle::TargetMissing);
    EXPECT_EQ(ObstacleOf(TextVariable("answer", {}), {1, 1}, {}).kind, ScoringObstacle::TargetValuesMissing);
    EXPECT_EQ(ObstacleOf(YesOrNo(), {}, {}).kind, ScoringObstacle::CountsMissing);
    EXPECT_EQ(ObstacleOf(TextVariable("answer", {"yes", "yes"}), {1, 1}, {}).kind, ScoringObstacle::TargetValueTwice);
    EXPECT_EQ(ObstacleOf(YesOrNo(), {1, 2, 3}, {}).message,
              "The target variable \"answer\" declares 2 values, but the model has 3 target counts.");
    EXPECT_EQ(ObstacleOf(YesOrNo(), {1}, {}).message,
              "The target variable \"answer\" declares 2 values, but the model has only 1 target count.");
}

TEST(StandardObstacle, IsAnInputWithoutItsParts) {
    const auto model = MakeStandardModel(0, YesOrNo(), {1, 1}, {});
    model->AddDensities("x", nullptr, {{}, {}});
    EXPECT_EQ(model->FindScoringObstacle().message, "The predictor \"x\" has no variable.");

    EXPECT_EQ(ObstacleOf(YesOrNo(), {1, 1}, {Densities("x", {{}})}).message,
              "The predictor \"x\" has densities for 1 target value only, but the target variable \"answer\" declares "
              "2.");
    EXPECT_EQ(ObstacleOf(YesOrNo(), {1, 1}, {Texts("colour", {"red"}, {})}).message,
              "The count table of predictor \"colour\" has 0 rows, but its encoder gives codes up to 0.");
    EXPECT_EQ(ObstacleOf(YesOrNo(), {1, 1}, {Texts("colour", {"red"}, {{1}})}).message,
              "The count table of predictor \"colour\" counts for 1 target value only, but the target variable "
              "\"answer\" declares 2.");
}

TEST(StandardObstacle, IsAnInputWithoutDensitiesOrTable) {
    const auto model = MakeStandardModel(0, YesOrNo(), {1, 1}, {colour});
    model->AddDensities("x", model->GetDictionary()->GetVar("colour"), {});
    EXPECT_EQ(model->FindScoringObstacle().message, "The predictor \"x\" has no encoder.");
}

TEST(StandardObstacle, IsAListOfPriorProbabilitiesThatDoesNotFit) {
    const auto model = MakeStandardModel(0, YesOrNo(), {1, 1}, {});
    model->SetTargetPriors({1.0});
    EXPECT_EQ(model->FindScoringObstacle().message,
              "The target variable \"answer\" declares 2 values, but 1 of them have a prior probability.");
    model->SetTargetPriors({0.5, 0.5});
    EXPECT_FALSE(model->FindScoringObstacle());
}

TEST(StandardObstacleDeathTest, StopsTheProcess_WhenACaseIsScoredAllTheSame) {
    const NamedRecord record = CaseOf({{"x", 1.0}, {"colour", "red"}});
    EXPECT_DEATH(ResultOf(*MakeStandardModel(0, YesOrNo(), {1, 1}, {Densities("x", {{}})}), record), "");
    EXPECT_DEATH(ResultOf(*MakeStandardModel(0, YesOrNo(), {1, 1}, {Texts("colour", {"red"}, {})}), record), "");
    StandardModel empty;
    ScoreResult* result = nullptr;
    EXPECT_DEATH(empty.GetScore(nullptr, result, false), "does not exist");
}

TEST(StandardObstacle, LeavesACaseWithoutAResult_WhenThereIsNoTarget) {
    StandardModel empty;
    EXPECT_EQ(FactsOf(*ResultOf(empty, CaseOf({}))).outcome, CaseOutcome::NothingPossible);
}

}  // namespace
}  // namespace nbscore::test
