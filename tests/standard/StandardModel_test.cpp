#include "standard/StandardModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "StandardParts.h"
#include "naivebayes/FakeDerivedFields.h"
#include "naivebayes/NaiveBayesClsResult.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;

std::unique_ptr<BaseDictVar> YesOrNo() {
    return TextVariable("answer", {"yes", "no"});
}

/// Counts 3 and 1; colour: red 2 and 0, blue 1 and 1.
std::unique_ptr<StandardModel> Colours(double threshold) {
    return MakeStandardModel(threshold, YesOrNo(), {3, 1}, {Texts("colour", {"red", "blue"}, {{2, 0}, {1, 1}})});
}

TEST(StandardModel, MultipliesSharesOfCounts) {
    const auto model = Colours(0.001);
    const double yes = 3.0 / 4 * (1.0 / 3);
    const double no = 1.0 / 4 * (1.0 / 1);
    const auto result = ResultOf(*model, CaseOf({{"colour", "blue"}}));
    EXPECT_EQ(ProbabilitiesOf(*result), (std::vector<double>{yes / (yes + no), no / (yes + no)}));
    EXPECT_EQ(result->GetPrediction()->GetString(), "yes");
    EXPECT_EQ(result->GetConfidence(), yes / (yes + no));
    EXPECT_EQ(result->GetScoreResultType(), ScoreResult::NaiveBayesClsResult);
    EXPECT_EQ(result->GetTarget(), model->GetDictionary()->GetVar("answer"));
}

TEST(StandardModel, PutsTheThresholdInThePlaceOfAZeroCount) {
    const auto model = Colours(0.001);
    const double yes = 3.0 / 4 * (2.0 / 3);
    const double no = 1.0 / 4 * 0.001;
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"colour", "red"}})),
              (std::vector<double>{yes / (yes + no), no / (yes + no)}));
}

TEST(StandardModel, GivesACategoryTheProbabilityZero_WhenItsCountAndTheThresholdAreZero) {
    EXPECT_EQ(ProbabilitiesOf(*Colours(0), CaseOf({{"colour", "red"}})), (std::vector<double>{1, 0}));
}

TEST(StandardModel, GivesThePriorShares_WhenNoInputIsUsable) {
    const auto model = Colours(0.001);
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({})), (std::vector<double>{0.75, 0.25}));
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"colour", "green"}})), (std::vector<double>{0.75, 0.25}));
    EXPECT_EQ(ProbabilitiesOf(*MakeStandardModel(0, YesOrNo(), {2, 6}, {}), CaseOf({})),
              (std::vector<double>{0.25, 0.75}));
}

TEST(StandardModel, PredictsTheFirstCategory_WhenSeveralAreHighest) {
    // The smoothed rule would look at the counts.
    const auto model = MakeStandardModel(0, TextVariable("t", {"a", "b", "c"}), {1, 2, 2}, {});
    EXPECT_EQ(ResultOf(*model, CaseOf({}))->GetPrediction()->GetString(), "b");
}

TEST(StandardModel, MultipliesDensities) {
    const auto model =
        MakeStandardModel(0.001, YesOrNo(), {1, 1}, {Densities("x", {GaussianOf(0, 1), GaussianOf(2, 4)})});
    const double yes = std::exp(-0.5) / std::sqrt(2 * std::numbers::pi);
    const double no = std::exp(-1.0 / 8) / std::sqrt(8 * std::numbers::pi);
    const auto probabilities = ProbabilitiesOf(*model, CaseOf({{"x", 1.0}}));
    EXPECT_NEAR(probabilities.at(0), yes / (yes + no), 1e-15);
    EXPECT_NEAR(probabilities.at(1), no / (yes + no), 1e-15);
    // A text among numbers is the number that it holds.
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"x", "1.0"}})), probabilities);
}

TEST(StandardModel, LeavesAnInputOut_WhenItsDistributionSaysNothingOfTheValue) {
    const auto model = MakeStandardModel(0.001, YesOrNo(), {1, 3},
                                         {Densities("x", {{Density::Poisson, 2, 0}, {Density::Poisson, 5, 0}})});
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"x", 1.5}})), (std::vector<double>{0.25, 0.75}));
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"x", -1.0}})), (std::vector<double>{0.25, 0.75}));
    EXPECT_NE(ProbabilitiesOf(*model, CaseOf({{"x", 1.0}})), (std::vector<double>{0.25, 0.75}));
}

TEST(StandardModel, LetsTinyDensitiesCompete_WhenTheThresholdIsZero) {
    // e^-800000 and e^-800400 are both far below the smallest double.
    const auto model =
        MakeStandardModel(0, YesOrNo(), {1, 1}, {Densities("x", {GaussianOf(0, 1), GaussianOf(-0.5, 1)})});
    const double quotient = std::exp(-400 - 0.0625 - 0.0625);  // about
    const auto probabilities = ProbabilitiesOf(*model, CaseOf({{"x", 800.0}}));
    EXPECT_EQ(probabilities.at(0), 1.0);
    EXPECT_NEAR(std::log(probabilities.at(1)), std::log(quotient), 0.01);
}

TEST(StandardModel, PutsTheThresholdInThePlaceOfExactZerosOnly_WhenAsked) {
    const auto make = [](double threshold) {
        return MakeStandardModel(threshold, YesOrNo(), {1, 1}, {Densities("x", {GaussianOf(0, 1), GaussianOf(9, 1)})});
    };
    // About e^-40.5 for the first category, below the threshold.
    const NamedRecord nine = CaseOf({{"x", 9.0}});
    const auto floored = make(0.001);
    EXPECT_NEAR(ProbabilitiesOf(*floored, nine).at(0), 0.001 / (0.001 + 0.3989), 1e-6);
    const auto plain = make(0.001);
    plain->SetDensityFloor(DensityFloor::ExactZeros);
    EXPECT_NEAR(ProbabilitiesOf(*plain, nine).at(0), std::exp(-40.5), 1e-20);
    // e^-800 is 0 as a double, e^-760.5 too.
    const NamedRecord far = CaseOf({{"x", 48.0}});
    EXPECT_EQ(ProbabilitiesOf(*plain, far), (std::vector<double>{0.5, 0.5}));
    const auto without = make(0);
    without->SetDensityFloor(DensityFloor::ExactZeros);
    EXPECT_EQ(FactsOf(*ResultOf(*without, far)).outcome, CaseOutcome::NothingPossible);
}

TEST(StandardModel, MultipliesAThousandInputs_WithoutUnderflow) {
    std::vector<StandardInput> inputs;
    for (int j = 0; j < 1000; ++j)
        inputs.push_back(Texts("x" + std::to_string(j), {"a", "b"}, {{1, 2}, {1e6, 1e6}}));
    const auto model = MakeStandardModel(0, YesOrNo(), {1, 1}, inputs);
    NamedRecord record;
    for (const StandardInput& input : inputs)
        record.Set(input.name, std::make_unique<StringValue>("a"));
    // (1e-6)^1000 against (2e-6)^1000, about.
    const auto probabilities = ProbabilitiesOf(*model, record);
    const double quotient = 1000 * (std::log(1 / (1 + 1e6)) - std::log(2 / (2 + 1e6)));
    EXPECT_EQ(probabilities.at(1), 1.0);
    EXPECT_NEAR(std::log(probabilities.at(0)), quotient, 1e-9);
}

TEST(StandardModel, RoundsAsPlainProductsDo) {
    const auto model = MakeStandardModel(0.01, YesOrNo(), {3, 7},
                                         {Texts("a", {"v"}, {{0.1, 0.3}}), Texts("b", {"v", "w"}, {{1, 7}, {2, 4}}),
                                          Texts("c", {"v", "w", "u"}, {{3, 1}, {7, 2}, {1, 9}})});
    const double yes = ((3.0 / 10 * (0.1 / 0.1)) * (1.0 / 3)) * (3.0 / 11);
    const double no = ((7.0 / 10 * (0.3 / 0.3)) * (7.0 / 11)) * (1.0 / 12);
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"a", "v"}, {"b", "v"}, {"c", "v"}})),
              (std::vector<double>{yes / (yes + no), no / (yes + no)}));
}

TEST(StandardModel, FillsOnlyThePrediction_WhenThatIsAllThatIsWanted) {
    const auto model = Colours(0.001);
    ScoreResult* filled = ResultOf(*model, CaseOf({{"colour", "red"}})).release();
    model->SetPredictionOnly(true);
    const NamedRecord record = CaseOf({{"colour", "blue"}});
    model->GetScore(&record, filled, false);
    const std::unique_ptr<ScoreResult> owned(filled);
    EXPECT_TRUE(model->GetPredictionOnly());
    EXPECT_EQ(owned->GetPrediction()->GetString(), "yes");
    EXPECT_EQ(owned->GetConfidence(), -1.0);
    EXPECT_EQ(ProbabilitiesOf(*owned), std::vector<double>());
}

TEST(StandardModel, FillsItsOwnResultsAgain_AndReplacesOthers) {
    const auto model = Colours(0.001);
    const auto other = Colours(0.001);
    const NamedRecord record = CaseOf({{"colour", "blue"}});
    ScoreResult* result = ResultOf(*model, record).release();
    const ScoreResult* const first = result;
    model->GetScore(&record, result, false);
    EXPECT_EQ(result, first);
    other->GetScore(&record, result, false);
    EXPECT_TRUE(dynamic_cast<StandardResult&>(*result).IsOf(*other));
    delete result;
    result = new NaiveBayesClsResult(nullptr);
    model->GetScore(&record, result, false);
    EXPECT_EQ(ProbabilitiesOf(*result).size(), 2U);
    delete result;
}

TEST(StandardModel, ReadsValuesByPosition_WhenRecordsHaveThem) {
    const auto model = MakeStandardModel(
        0, YesOrNo(), {1, 1}, {Texts("a", {"v", "w"}, {{1, 3}, {3, 1}}), Texts("b", {"v", "w"}, {{1, 3}, {3, 1}})});
    PositionsOnlyRecord record({"unused", "b", "a"});
    record.SetText(1, "v");
    EXPECT_EQ(ProbabilitiesOf(*model, record), (std::vector<double>{0.25, 0.75}));
    record.SetText(2, "w");
    EXPECT_EQ(ProbabilitiesOf(*model, record), (std::vector<double>{0.5, 0.5}));
    // Others are read by name all the same.
    EXPECT_EQ(ProbabilitiesOf(*model, CaseOf({{"a", "w"}})), (std::vector<double>{0.75, 0.25}));
}

/// A model that reads a derived field "d", with the value "w", and a data field.
struct WithDerived {
    WithDerived() {
        auto values = std::make_unique<NamedRecord>();
        values->Set("d", std::make_unique<StringValue>("w"));
        auto var = TextVariable("d", {});
        derived = new FakeDerivedFields(std::move(var), std::move(values));
        model = MakeStandardModel(0, YesOrNo(), {1, 1}, {Texts("source", {"x"}, {{1, 1}})});
        model->SetTransformationScoreDictionary(derived);
        model->AddTable("d", derived->GetVar("d"),
                        std::make_unique<NBCatStringEncoder>(std::vector<std::string>{"v", "w"}), {{1, 3}, {3, 1}});
    }
    std::unique_ptr<StandardModel> model;
    FakeDerivedFields* derived;
};

TEST(StandardModel, ReadsDerivedFields_ComputedFromTreatedValues) {
    const WithDerived with;
    const NamedRecord record = CaseOf({{"source", "x"}});
    EXPECT_EQ(ProbabilitiesOf(*with.model, record), (std::vector<double>{0.75, 0.25}));
    EXPECT_EQ(with.derived->asked, 1);
    EXPECT_NE(with.derived->askedRecord, &record);
    EXPECT_TRUE(with.model->GetTables().readsDerivedFields);
}

TEST(StandardModel, TakesDerivedValuesFromTheRecord_WhenItHasThem) {
    const WithDerived with;
    EXPECT_EQ(ProbabilitiesOf(*ResultOf(*with.model, CaseOf({{"d", "v"}}), true)), (std::vector<double>{0.25, 0.75}));
    EXPECT_EQ(with.derived->asked, 0);
}

TEST(StandardModel, DescribesItsInputs) {
    const auto model =
        MakeStandardModel(0.5, YesOrNo(), {3, 1},
                          {Texts("colour", {"red", "blue"}, {{2, 0}, {1, 1}}), Densities("x", {GaussianOf(0, 1), {}})});
    const ModelDescription description = model->Describe();
    EXPECT_EQ(description.target, "answer");
    EXPECT_EQ(description.targetCategories, (std::vector<std::string>{"yes", "no"}));
    const ClassifierDescription& classifier = description.classifiers.at(0);
    EXPECT_EQ(classifier.threshold, 0.5);
    EXPECT_EQ(classifier.inputs.at(0).kind, InputDescription::Texts);
    EXPECT_EQ(classifier.inputs.at(0).categories, 2U);
    EXPECT_EQ(classifier.inputs.at(0).countedCategories, 2U);
    EXPECT_EQ(classifier.inputs.at(0).total, 4.0);
    EXPECT_EQ(classifier.inputs.at(1).name, "x");
    EXPECT_EQ(classifier.inputs.at(1).kind, InputDescription::Densities);
}

TEST(StandardModel, DisplaysItsRuleAndItsDistributions) {
    const auto model = MakeStandardModel(
        0.5, YesOrNo(), {3, 1},
        {Texts("colour", {"red"}, {{2, 1}}), Densities("x", {GaussianOf(1.5, 4), {Density::Uniform, -1, 2}}),
         Densities("n", {{Density::Poisson, 7, 0}, {Density::Any, 3, 9}}), Densities("y", {{}, {}})});
    const std::string text = DisplayText(*model);
    EXPECT_THAT(text, HasSubstr("Scoring rule: standard\n"));
    EXPECT_THAT(text, HasSubstr("Target probabilities: 0.75 0.25 \n"));
    EXPECT_THAT(text, HasSubstr("Target category 0: Gaussian with mean = 1.5, variance = 4\n"
                                "Target category 1: uniform from -1 to 2\n"));
    EXPECT_THAT(text, HasSubstr("Target category 0: Poisson with mean = 7\n"
                                "Target category 1: any distribution with mean = 3, variance = 9\n"));
    EXPECT_THAT(text, HasSubstr("Target category 1: no distribution\n"));
}

TEST(StandardModel, TellsWhichFieldsNeedNotBeThere) {
    const auto model = Colours(0.001);
    EXPECT_EQ(model->GetOptionalFields(), std::vector<std::string>());
    auto* dictionary = const_cast<ScoreDictionary*>(model->GetDictionary());
    dictionary->AddVar("unread", TextVariable("unread", {}).release());
    const ScoreDictVar* unread = dictionary->GetVar("unread");
    model->AddTreatment(unread, FieldTreatment(*unread, {}));
    EXPECT_EQ(model->GetOptionalFields(), std::vector<std::string>{"unread"});
}

TEST(StandardModel, HasNoOutputColumns_WhenTheDocumentAsksForNone) {
    const auto model = Colours(0.001);
    EXPECT_TRUE(model->GetOutputColumns().empty());
    std::vector<OutputValue> values(3);
    const NamedRecord record = CaseOf({});
    model->ComputeOutputs(record, *ResultOf(*model, record), values);
    EXPECT_TRUE(values.empty());
}

}  // namespace
}  // namespace nbscore::test
