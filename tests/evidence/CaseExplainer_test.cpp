// Evidence by hand, what is left out and why, reasons, and arguments that cannot be right.

#include "evidence/CaseExplainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "naivebayes/NBinningEncoder.h"
#include "standard/StandardParts.h"
#include "support/FakeModel.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

/// Colours of apples and pears: 100 of each, and sizes that were seldom noted.
std::unique_ptr<NaiveBayesModel> Fruits() {
    return MakeModel(0.5, TextVariable("fruit", {"apple", "pear"}), {100, 300},
                     {{"colour", {"red", "green", "blue"}, {{90, 30}, {10, 270}, {0, 0}}},
                      {"size", {"small", "large"}, {{1, 3}, {1, 1}}}});
}

std::unique_ptr<NaiveBayesModel> ThreeKinds() {
    return MakeModel(0.5, TextVariable("kind", {"a", "b", "c"}), {10, 20, 30},
                     {{"x", {"1", "2"}, {{9, 1, 10}, {1, 19, 20}}}});
}

Evidence ExplainCase(ScoreModel& model, const ScoreCaseRecord& record, const AskedPair& pair = {}) {
    CaseExplainer::Memory memory;
    Evidence evidence;
    CaseExplainer(model).Explain(record, 0, pair, evidence, memory);
    return evidence;
}

TEST(CaseExplainer, WeighsTheSecondCategoryAgainstTheFirst_WhenThereAreTwo) {
    const auto model = Fruits();
    const Evidence evidence = ExplainCase(*model, CaseOf({{"colour", "red"}, {"size", "large"}}));
    EXPECT_EQ(evidence.state, Evidence::Explained);
    EXPECT_EQ(evidence.category, 1U);
    EXPECT_EQ(evidence.against, 0U);
    EXPECT_THAT(evidence.base, Optional(DoubleEq(std::log(300.5 / 100.5))));
    ASSERT_EQ(evidence.predictors.size(), 2U);
    const PredictorEvidence& colour = evidence.predictors[0];
    EXPECT_EQ(colour.value, "red");
    ASSERT_EQ(colour.factors.size(), 2U);
    EXPECT_DOUBLE_EQ(colour.factors[0].mantissa, 90.5 / 101);
    EXPECT_DOUBLE_EQ(colour.factors[1].mantissa, 30.5 / 301);
    const double red = std::log((30.5 / 301) / (90.5 / 101));
    const double green = std::log((270.5 / 301) / (10.5 / 101));
    EXPECT_NEAR(*colour.weight, red, 1e-15);
    // Of 400 counted fruits 120 are red and 280 green; none is blue.
    EXPECT_NEAR(*colour.average, 0.3 * red + 0.7 * green, 1e-15);
    EXPECT_NEAR(*colour.againstAverage, red - (0.3 * red + 0.7 * green), 1e-15);
    EXPECT_NEAR(*colour.range.lowest, red, 1e-15);
    EXPECT_NEAR(*colour.range.highest, green, 1e-15);
    EXPECT_NEAR(*evidence.logOdds, std::log(evidence.probabilities[1] / evidence.probabilities[0]), 1e-15);
}

TEST(CaseExplainer, SaysWhyAPredictorIsLeftOut) {
    const auto model = Fruits();
    Evidence evidence = ExplainCase(*model, CaseOf({{"colour", "pink"}, {"size", "large"}}));
    EXPECT_EQ(evidence.predictors[0].kind, PredictorReading::Unknown);
    EXPECT_EQ(evidence.predictors[0].value, "pink");
    EXPECT_EQ(evidence.predictors[0].weight, 0.0);
    EXPECT_THAT(evidence.predictors[0].factors, IsEmpty());
    EXPECT_EQ(*evidence.predictors[0].againstAverage, -*evidence.predictors[0].average);

    evidence = ExplainCase(*model, CaseOf({{"size", "large"}}));
    EXPECT_EQ(evidence.predictors[0].kind, PredictorReading::Missing);
    EXPECT_EQ(evidence.predictors[0].value, "");
    EXPECT_EQ(evidence.predictors[0].weight, 0.0);
}

TEST(CaseExplainer, SaysThatATextIsInNoBin) {
    NaiveBayesModel model;
    auto dictionary = std::make_unique<BaseDictionary>();
    auto weight = ContinuousVariable("weight");
    auto target = TextVariable("fruit", {"apple", "pear"});
    model.SetThreshold(0.5);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 1});
    model.AddPredictorVar("weight", weight.get());
    model.AddEncoder(new NBinningEncoder({0.0, 1.0, 2.0}));
    model.SetPredCounts(0, {{1, 2}, {3, 4}, {5, 6}, {7, 8}});
    dictionary->AddVar("weight", weight.release());
    dictionary->AddVar("fruit", target.release());
    model.SetScoreDictionary(dictionary.release());

    EXPECT_EQ(ExplainCase(model, CaseOf({{"weight", "heavy"}})).predictors[0].kind, PredictorReading::TextInBins);
    EXPECT_EQ(ExplainCase(model, CaseOf({{"weight", 0.5}})).predictors[0].kind, PredictorReading::Known);
}

TEST(CaseExplainer, HasThePriorAndSaysSo_WhenNothingIsKnown) {
    const auto model = Fruits();
    const Evidence evidence = ExplainCase(*model, CaseOf({{"colour", "pink"}}));
    EXPECT_EQ(evidence.state, Evidence::NothingKnown);
    EXPECT_EQ(evidence.probabilities, evidence.priors);
    EXPECT_EQ(evidence.logOdds, evidence.base);
}

TEST(CaseExplainer, HasNoWeight_WhenAFactorIsZero) {
    const auto model = MakeStandardModel(
        0, TextVariable("answer", {"yes", "no"}), {3, 1},
        {Texts("colour", {"red", "blue"}, {{2, 0}, {1, 1}}), Texts("size", {"small", "large"}, {{2, 1}, {1, 1}})});
    Evidence evidence = ExplainCase(*model, CaseOf({{"colour", "red"}, {"size", "large"}}));
    EXPECT_EQ(evidence.predictors[0].weight, std::nullopt);
    EXPECT_EQ(evidence.predictors[0].againstAverage, std::nullopt);
    EXPECT_NE(evidence.predictors[1].weight, std::nullopt);
    EXPECT_EQ(evidence.logOdds, std::nullopt);
    EXPECT_EQ(evidence.probabilities, (std::vector<double>{1, 0}));
    // Red was counted, so what the predictor says on average is not known either.
    EXPECT_EQ(evidence.predictors[0].average, std::nullopt);
}

TEST(CaseExplainer, HasNoWeights_WhenNothingIsPossible) {
    const auto model = MakeStandardModel(
        0, TextVariable("answer", {"yes", "no"}), {3, 1},
        {Texts("colour", {"red", "blue"}, {{2, 0}, {1, 1}}), Texts("size", {"small", "large"}, {{0, 1}, {1, 1}})});
    const Evidence evidence = ExplainCase(*model, CaseOf({{"colour", "red"}, {"size", "small"}}));
    EXPECT_EQ(evidence.state, Evidence::NothingPossible);
    EXPECT_THAT(evidence.probabilities, IsEmpty());
    EXPECT_EQ(evidence.base, std::nullopt);
    EXPECT_EQ(evidence.predictors[1].weight, std::nullopt);
    EXPECT_THAT(FindReasons(evidence, ReasonKind::HeldDown, 5), IsEmpty());
}

TEST(CaseExplainer, NamesTheFieldWhoseValueEndsTheCase) {
    const auto model =
        MakeStandardModel(0.1, TextVariable("answer", {"yes", "no"}), {3, 1}, {Numbers("x", {1, 2}, {{2, 0}, {1, 1}})});
    const Evidence evidence = ExplainCase(*model, CaseOf({{"x", "a text"}}));
    EXPECT_EQ(evidence.state, Evidence::InvalidValue);
    EXPECT_EQ(evidence.invalidField, "x");
    EXPECT_THAT(evidence.probabilities, IsEmpty());
    EXPECT_EQ(evidence.predictors.size(), 1U);
}

TEST(CaseExplainer, HasNoAverageOfDensities_AndRangesOverTheirCentres) {
    const auto model = MakeStandardModel(0, TextVariable("answer", {"yes", "no"}), {1, 1},
                                         {Densities("x", {GaussianOf(0, 1), GaussianOf(2, 1)})});
    const Evidence evidence = ExplainCase(*model, CaseOf({{"x", 5.0}}));
    // Equal variances: the weight is 2 x - 2.
    EXPECT_NEAR(*evidence.predictors[0].weight, 8.0, 1e-14);
    EXPECT_EQ(evidence.predictors[0].average, std::nullopt);
    EXPECT_NEAR(*evidence.predictors[0].range.lowest, -2.0, 1e-14);
    EXPECT_NEAR(*evidence.predictors[0].range.highest, 8.0, 1e-14);
    EXPECT_EQ(evidence.averageBase, evidence.base);
}

TEST(CaseExplainer, WeighsThePredictedCategoryAgainstTheRunnerUp_WhenThereAreMore) {
    const auto model = ThreeKinds();
    const Evidence evidence = ExplainCase(*model, CaseOf({{"x", "1"}}));
    EXPECT_EQ(evidence.category, 2U);
    EXPECT_EQ(evidence.against, 0U);
    EXPECT_GT(*evidence.logOdds, 0.0);
}

TEST(CaseExplainer, TakesTheMostProbableOther_WhenOneCategoryIsAskedFor) {
    const auto model = ThreeKinds();
    const NamedRecord record = CaseOf({{"x", "1"}});
    Evidence evidence = ExplainCase(*model, record, {.against = 2});
    EXPECT_EQ(evidence.category, 0U);
    EXPECT_EQ(evidence.against, 2U);
    evidence = ExplainCase(*model, record, {.category = 1});
    EXPECT_EQ(evidence.category, 1U);
    EXPECT_EQ(evidence.against, 2U);
    evidence = ExplainCase(*model, record, {.category = 0, .against = 1});
    EXPECT_EQ(evidence.category, 0U);
    EXPECT_EQ(evidence.against, 1U);
}

TEST(CaseExplainer, RefusesWhatDoesNotExist) {
    const auto model = ThreeKinds();
    const CaseExplainer explainer(*model);
    const NamedRecord record = CaseOf({{"x", "1"}});
    CaseExplainer::Memory memory;
    Evidence evidence;
    EXPECT_THROW(explainer.Explain(record, 1, {}, evidence, memory), std::out_of_range);
    EXPECT_THROW(explainer.Explain(record, static_cast<std::size_t>(-1), {}, evidence, memory), std::out_of_range);
    EXPECT_THROW(explainer.Explain(record, 0, {.category = 3}, evidence, memory), std::out_of_range);
    EXPECT_THROW(explainer.Explain(record, 0, {.against = static_cast<std::size_t>(-1)}, evidence, memory),
                 std::out_of_range);
    EXPECT_THROW(explainer.Explain(record, 0, {.category = 1, .against = 1}, evidence, memory), std::invalid_argument);
    EXPECT_THROW(explainer.GetPredictors(1), std::out_of_range);
    // What was asked for wrongly leaves it of use.
    explainer.Explain(record, 0, {}, evidence, memory);
    EXPECT_EQ(evidence.state, Evidence::Explained);
}

TEST(CaseExplainer, RefusesAModelThatDoesNotLayItsTablesOpen) {
    FakeModel model;
    EXPECT_THROW(CaseExplainer{model}, std::invalid_argument);
}

TEST(CaseExplainer, HasNoWeights_WhenTheTargetHasOneCategory) {
    const auto model = MakeModel(0.5, TextVariable("kind", {"a"}), {10}, {{"x", {"1"}, {{9}}}});
    const Evidence evidence = ExplainCase(*model, CaseOf({{"x", "1"}}));
    EXPECT_EQ(evidence.state, Evidence::NoOtherCategory);
    EXPECT_EQ(evidence.probabilities, std::vector<double>{1.0});
    EXPECT_EQ(evidence.logOdds, std::nullopt);
}

TEST(CaseExplainer, TellsTheSame_OnFourThreads) {
    const auto model = ThreeKinds();
    const CaseExplainer explainer(*model);
    const std::vector<int> equal = InThreads([&](int thread) {
        const auto length = static_cast<std::size_t>(thread) % 3;
        CaseExplainer::Memory memory;
        Evidence evidence;
        int same = 1;
        for (int i = 0; i < 200; ++i) {
            explainer.Explain(CaseOf({{"x", "2"}}), 0, {.against = length}, evidence, memory);
            same &= evidence.against == length && evidence.logOdds ? 1 : 0;
        }
        return same;
    });
    EXPECT_EQ(equal, std::vector<int>(4, 1));
}

/// @param bounds of each predictor: the lowest, its own and the highest weight.
Evidence EvidenceOf(const std::vector<std::vector<double>>& bounds) {
    Evidence evidence;
    for (const std::vector<double>& ofPredictor : bounds) {
        PredictorEvidence& predictor = evidence.predictors.emplace_back();
        predictor.range = {.lowest = ofPredictor[0], .highest = ofPredictor[2]};
        predictor.weight = ofPredictor[1];
    }
    return evidence;
}

TEST(Reasons, AreThoseFarthestFromTheBestOrTheWorst) {
    const Evidence evidence = EvidenceOf({{-1, 0, 1}, {-4, 0, 3}, {-2, 2, 2}, {-5, -5, -1}});
    EXPECT_THAT(FindReasons(evidence, ReasonKind::HeldDown, 2), ElementsAre(3, 1));
    EXPECT_THAT(FindReasons(evidence, ReasonKind::HeldDown, 10), ElementsAre(3, 1, 0));
    EXPECT_THAT(FindReasons(evidence, ReasonKind::Lifted, 10), ElementsAre(1, 2, 0));
    EXPECT_THAT(FindReasons(evidence, ReasonKind::Lifted, 0), IsEmpty());
}

TEST(Reasons, ComeInTheOrderOfPredictors_WhenTheyAreEquallyFar) {
    const Evidence evidence = EvidenceOf({{0, 0, 1}, {0, 0, 2}, {1, 1, 2}, {0, 0, 1}});
    EXPECT_THAT(FindReasons(evidence, ReasonKind::HeldDown, 3), ElementsAre(1, 0, 2));
}

TEST(Reasons, AreNotThoseWithoutAWeight) {
    Evidence evidence = EvidenceOf({{0, 0, 1}, {0, 0, 2}});
    evidence.predictors[1].weight.reset();
    EXPECT_THAT(FindReasons(evidence, ReasonKind::HeldDown, 3), ElementsAre(0));
}

}  // namespace
}  // namespace nbscore::test
