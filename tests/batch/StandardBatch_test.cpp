// Batches by the standard's rule: what they answer is what the model answers case by case.

#include "batch/StandardBatch.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <stdexcept>

#include "batch/BatchEngine.h"
#include "batch/RandomStandardModel.h"
#include "batch/StandardAnswers.h"
#include "naivebayes/ModelParts.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

TEST(StandardBatches, AnswerWhatTheModelAnswers_ForEveryShapeOfModelAndColumn) {
    Randomness random(1);
    std::size_t cases = 0;
    std::size_t withoutResult = 0;
    for (int number = 0; number < 600 && !testing::Test::HasFailure(); ++number) {
        SCOPED_TRACE(number);
        const auto model = MakeRandomStandardModel(random);
        ASSERT_EQ(model->FindScoringObstacle().message, "");
        const InputTable table = DrawCases(*model, static_cast<std::size_t>(Between(0, 300, random)), random);
        OneByOne expected = ScoreOneByOne(*model, table);
        Answers actual = ScoreColumns(BatchScorer(*model), table, random);
        EXPECT_EQ(std::accumulate(actual.missing.begin(), actual.missing.end(), std::uint64_t{0}), expected.missing);
        expected.answers.missing = actual.missing;
        EXPECT_EQ(FirstDifference(expected.answers, actual), "");
        const BatchScorer scorer(*model);
        Answers byRow = AnswersByRow(scorer.GetInputs(), *scorer.MakeRow(), table, random);
        byRow.missing = actual.missing;
        byRow.unknown = actual.unknown;
        EXPECT_EQ(FirstDifference(expected.answers, byRow), "");
        cases += table.cases;
        withoutResult += expected.withoutResult;
    }
    // The models are of use: some cases have no result, and many have one.
    EXPECT_GT(withoutResult, cases / 20);
    EXPECT_GT(cases - withoutResult, cases / 4);
}

TEST(StandardBatches, AnswerAlike_OnFourThreads_WhenTheModelIsGone) {
    Randomness random(2);
    auto model = MakeRandomStandardModel(random);
    const InputTable table = DrawCases(*model, 500, random);
    const Answers expected = ScoreOneByOne(*model, table).answers;
    const BatchScorer scorer(*model);
    model.reset();
    const std::vector<int> equal = InThreads([&](int thread) {
        Randomness ofThread(static_cast<std::uint64_t>(thread));
        Answers actual = ScoreColumns(scorer, table, ofThread);
        actual.missing = expected.missing;
        return FirstDifference(expected, actual).empty() ? 1 : 0;
    });
    EXPECT_EQ(equal, std::vector<int>(4, 1));
}

/// A model whose field "colour" is read, and whose field "unread" only has declared values.
class StandardInputs : public ::testing::Test {
protected:
    StandardInputs() {
        auto dictionary = std::make_unique<BaseDictionary>();
        for (const char* name : {"answer", "colour"})
            dictionary->AddVar(name, TextVariable(name, {"yes", "no"}).release());
        dictionary->AddVar("unread", NumberVariable("unread", {1}).release());
        const ScoreDictionary& fields = *dictionary;
        model.SetScoreDictionary(dictionary.release());
        model.SetTargetVar(fields.GetVar("answer"));
        model.SetTargetCounts({1, 3});
        model.AddTreatment(fields.GetVar("unread"), FieldTreatment(*fields.GetVar("unread"), {}));
        model.AddTable("shade", fields.GetVar("colour"),
                       std::make_unique<NBCatStringEncoder>(std::vector<std::string>{"yes"}), {{1, 3}});
    }
    StandardModel model;
};

TEST_F(StandardInputs, AreThoseOfPredictors_ThenFieldsThatNoneReads) {
    const BatchScorer scorer(model);
    ASSERT_EQ(scorer.GetInputs().size(), 2U);
    EXPECT_EQ(scorer.GetInputs()[0].name, "colour");
    EXPECT_EQ(scorer.GetInputs()[0].kind, PredictorTables::Texts);
    EXPECT_EQ(scorer.GetInputs()[1].name, "unread");
    EXPECT_EQ(scorer.GetInputs()[1].kind, PredictorTables::Numbers);
    EXPECT_EQ(scorer.GetInputsOfPredictors(), std::vector<std::size_t>{0});
    EXPECT_EQ(scorer.GetCategories(), (std::vector<std::string>{"yes", "no"}));
    EXPECT_TRUE(scorer.GetSubModels().empty());
    EXPECT_FALSE(scorer.IsSet());
    EXPECT_FALSE(scorer.ReadsDerivedFields());
}

TEST_F(StandardInputs, AreMissing_WhereADictionaryHasNoValueForACode) {
    const BatchScorer scorer(model);
    const std::vector<std::string_view> texts{"yes", "no"};
    const std::uint8_t onlyFirst = 0b01;
    const InputDictionary ofColour = scorer.MakeDictionary(0, texts, {&onlyFirst, 0});
    const std::vector<std::uint8_t> codes{0, 1, 1};
    std::vector<std::uint64_t> missing(1);
    AnswerColumns answers;
    answers.missing = missing;
    scorer.Score(std::vector<Column>{CodeColumn<std::uint8_t>{codes, &ofColour, {}}, AbsentColumn()}, 3, answers);
    EXPECT_EQ(missing.front(), 2U);
}

TEST_F(StandardInputs, AreRefused_WhenTheyDoNotFit) {
    const BatchScorer scorer(model);
    const std::vector<std::string_view> texts{"yes", "no"};
    const InputDictionary ofColour = scorer.MakeDictionary(0, texts);
    EXPECT_EQ(ofColour.GetSize(), 2U);
    EXPECT_THROW(static_cast<void>(scorer.MakeDictionary(2, texts)), std::out_of_range);
    const std::vector<std::int8_t> codes{0, 2};
    std::vector<std::int32_t> predicted(2);
    AnswerColumns answers;
    answers.predicted = predicted;
    const CodeColumn<std::int8_t> column{codes, &ofColour, {}};
    EXPECT_THROW(scorer.Score(std::vector<Column>{column, AbsentColumn()}, 2, answers), std::out_of_range);
    EXPECT_THROW(scorer.Score(std::vector<Column>{AbsentColumn(), column}, 2, answers), std::invalid_argument);
    EXPECT_THROW(scorer.Score(std::vector<Column>{AbsentColumn()}, 2, answers), std::invalid_argument);
    EXPECT_THROW(scorer.Score(std::vector<Column>{AbsentColumn(), AbsentColumn()}, 3, answers), std::invalid_argument);
}

/// They go through the scoring of cases one by one.
TEST_F(StandardInputs, AreNoneOfTheEngineOfTheOtherRule) {
    EXPECT_THROW(BatchEngine{model}, std::invalid_argument);
}

}  // namespace
}  // namespace nbscore::test
