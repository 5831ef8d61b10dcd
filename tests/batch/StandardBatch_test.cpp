// Batches by the standard's rule: what they answer is what the model answers case by case.

#include "batch/StandardBatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>
#include <stdexcept>

#include "batch/Answers.h"
#include "batch/BatchEngine.h"
#include "batch/OwnedColumn.h"
#include "batch/RandomStandardModel.h"
#include "framework/CaseFacts.h"
#include "framework/MCMV.h"
#include "naivebayes/ModelParts.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

/// What the model answers case by case. Derived values come from the table.
struct OneByOne {
    Answers answers;
    /// Of all predictors together.
    std::uint64_t missing = 0;
    std::size_t withoutResult = 0;
};

void ReadCase(const ScoreResult& result, std::size_t categories, Answers& answers) {
    const auto& percents = dynamic_cast<const ScoreClsResult&>(result).GetAllValuePercent();
    if (percents.empty()) {
        answers.predicted.push_back(-1);
        answers.confidence.push_back(MCMV::gMissingValue);
        answers.matrix.insert(answers.matrix.end(), categories, MCMV::gMissingValue);
    } else {
        ReadAnswer(result, answers);
    }
}

OneByOne Score(StandardModel& model, const InputTable& table) {
    OneByOne scored;
    const ModelDescription description = model.Describe();
    std::map<std::string, std::size_t> positions;
    for (const InputDescription& input : description.classifiers.front().inputs)
        positions.emplace(input.name, positions.size());
    scored.answers.unknown.resize(positions.size());
    RecordOfTable record(table);
    ScoreResult* result = nullptr;
    for (std::size_t entry = 0; entry < table.cases; ++entry) {
        record.GoTo(entry);
        model.GetScore(&record, result, true);
        ReadCase(*result, description.targetCategories.size(), scored.answers);
        const CaseFacts& facts = dynamic_cast<const ResultFacts&>(*result).GetFacts();
        if (facts.outcome != CaseOutcome::Scored) ++scored.withoutResult;
        if (facts.outcome == CaseOutcome::InvalidValue) continue;
        for (const CaseFacts::Unknown& unknown : facts.unknown)
            ++scored.answers.unknown[positions.at(*unknown.field)];
        scored.missing += positions.size() - facts.usable - facts.unknown.size();
    }
    delete result;
    return scored;
}

const std::vector<CaseValue>& ColumnOf(const InputTable& table, const std::string& name) {
    return table.columns.at(static_cast<std::size_t>(std::ranges::find(table.names, name) - table.names.begin()));
}

Answers ScoreAtOnce(const BatchScorer& scorer, const InputTable& table, Randomness& random) {
    std::vector<std::unique_ptr<OwnedColumn>> columns;
    std::vector<Column> borrowed;
    for (std::size_t input = 0; input < scorer.GetInputs().size(); ++input) {
        const DictionaryMaker dictionaries{
            [&, input](std::span<const std::string_view> values) { return scorer.MakeDictionary(input, values); },
            [&, input](std::span<const double> values) { return scorer.MakeDictionary(input, values); }};
        columns.push_back(
            std::make_unique<OwnedColumn>(ColumnOf(table, scorer.GetInputs()[input].name), dictionaries, random));
        borrowed.push_back(columns.back()->Get());
    }
    const std::size_t categories = scorer.GetCategories().size();
    Answers answers;
    answers.predicted.resize(table.cases);
    answers.confidence.resize(table.cases);
    answers.matrix.resize(table.cases * categories);
    answers.missing.resize(scorer.GetInputsOfPredictors().size());
    answers.unknown.resize(scorer.GetInputsOfPredictors().size());
    AnswerColumns room;
    room.predicted = answers.predicted;
    room.confidence = answers.confidence;
    room.probabilities = answers.matrix;
    room.missing = answers.missing;
    room.unknown = answers.unknown;
    if (OneIn(2, random)) room.probabilityOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(borrowed, table.cases, room);
    if (room.probabilityOrder == MatrixOrder::ColumnByColumn) {
        std::vector<double> byCase;
        for (std::size_t entry = 0; entry < table.cases; ++entry) {
            for (std::size_t k = 0; k < categories; ++k)
                byCase.push_back(answers.matrix[k * table.cases + entry]);
        }
        answers.matrix = std::move(byCase);
    }
    return answers;
}

TEST(StandardBatches, AnswerWhatTheModelAnswers_ForEveryShapeOfModelAndColumn) {
    Randomness random(1);
    std::size_t cases = 0;
    std::size_t withoutResult = 0;
    for (int number = 0; number < 600 && !testing::Test::HasFailure(); ++number) {
        SCOPED_TRACE(number);
        const auto model = MakeRandomStandardModel(random);
        ASSERT_EQ(model->FindScoringObstacle().message, "");
        const InputTable table = DrawCases(*model, static_cast<std::size_t>(Between(0, 300, random)), random);
        OneByOne expected = Score(*model, table);
        Answers actual = ScoreAtOnce(BatchScorer(*model), table, random);
        EXPECT_EQ(std::accumulate(actual.missing.begin(), actual.missing.end(), std::uint64_t{0}), expected.missing);
        expected.answers.missing = actual.missing;
        EXPECT_EQ(FirstDifference(expected.answers, actual), "");
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
    const Answers expected = Score(*model, table).answers;
    const BatchScorer scorer(*model);
    model.reset();
    const std::vector<int> equal = InThreads([&](int thread) {
        Randomness ofThread(static_cast<std::uint64_t>(thread));
        Answers actual = ScoreAtOnce(scorer, table, ofThread);
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
