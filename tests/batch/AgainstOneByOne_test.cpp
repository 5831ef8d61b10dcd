// Batches against the models themselves: documents and models of every shape, cases drawn from what they know and do
// not know, every shape of column, every set of instructions. All answers must have the same bits.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <numeric>
#include <sstream>

#include "batch/BatchCheck.h"
#include "batch/InstructionSets.h"
#include "batch/ResolvedCases.h"
#include "batch/ShapedModel.h"
#include "cases/CaseFile.h"
#include "cases/CaseTable.h"
#include "host/LoadedModel.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "table/CaseBinder.h"
#include "table/CsvReader.h"

namespace nbscore::test {
namespace {

class BatchesAgainstOneByOne : public WithInstructionSet {};

std::shared_ptr<PluginLibrary> Plugin() {
    static const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    return plugin;
}

std::unique_ptr<ScoreModel> Parse(const std::string& text) {
    std::istringstream source(text);
    return std::unique_ptr<ScoreModel>(Plugin()->MakeTranslator()->ParseFromTree(source, "UTF-8"));
}

TEST_P(BatchesAgainstOneByOne, Agree_ForAllCaseFiles) {
    Randomness random(1);
    int scored = 0;
    for (const CaseFile& caseFile : AllCaseFiles()) {
        if (!caseFile.expectedTable || caseFile.rule != ScoringRule::Smoothed) continue;
        SCOPED_TRACE(caseFile.folder.filename().string());
        const LoadedModel model = LoadedModel::Read(Plugin(), caseFile.document);
        ExpectBatchesLikeOneByOne(model.Get(), 300, random);
        ++scored;
    }
    EXPECT_GT(scored, 20);
}

/// The rows of a table, as the command binds them to the model's fields.
void AddRows(const std::filesystem::path& file, const ScoreModel& model, ResolvedCases& cases) {
    std::ifstream input(file, std::ios::binary);
    CsvReader rows(input, file.string(), ',');
    std::vector<std::string_view> cells;
    ASSERT_TRUE(rows.ReadRow(cells));
    CaseBinder binder(model, {cells.begin(), cells.end()}, file.string(), {});
    while (rows.ReadRow(cells))
        cases.Add(binder.Bind(cells, rows.GetRowLine()));
}

TEST_P(BatchesAgainstOneByOne, Agree_ForTheRowsOfAllCaseFiles) {
    Randomness random(12);
    std::size_t scored = 0;
    for (const CaseFile& caseFile : AllCaseFiles()) {
        if (!caseFile.expectedTable || caseFile.rule != ScoringRule::Smoothed) continue;
        SCOPED_TRACE(caseFile.folder.filename().string());
        const LoadedModel model = LoadedModel::Read(Plugin(), caseFile.document);
        ResolvedCases cases(model.Get());
        AddRows(caseFile.rows, model.Get(), cases);
        ExpectBatchesLike(cases, model.Get(), random);
        scored += cases.GetTable().cases;
    }
    EXPECT_GT(scored, 100U);
}

TEST_P(BatchesAgainstOneByOne, Agree_ForRandomDocuments) {
    Randomness random(2);
    for (int number = 0; number < 150 && !HasFailure(); ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE(document.text);
        ExpectBatchesLikeOneByOne(*Parse(document.text), 60, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForRandomSets) {
    Randomness random(3);
    for (int number = 0; number < 150 && !HasFailure(); ++number) {
        const RandomSet set = MakeRandomSet(random);
        SCOPED_TRACE(set.text);
        ExpectBatchesLikeOneByOne(*Parse(set.text), 60, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForRandomDerivedInputs) {
    Randomness random(4);
    for (int number = 0; number < 60 && !HasFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        SCOPED_TRACE(made.document.text);
        ExpectBatchesLikeOneByOne(*Parse(made.document.text), 60, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForInputsDerivedFromRandomCases) {
    Randomness random(13);
    for (int number = 0; number < 60 && !HasFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        SCOPED_TRACE(made.document.text);
        const std::unique_ptr<ScoreModel> model = Parse(made.document.text);
        ResolvedCases cases(*model);
        BaseCaseRecord record(NamesOf(made.columns));
        for (int i = 0; i < 40; ++i) {
            FillRecord(record, made.columns, MakeRandomDerivedCase(made, random).cells);
            cases.Add(record);
        }
        ExpectBatchesLike(cases, *model, random);
    }
}

std::vector<ShapedPredictor> Mixed(std::size_t categories) {
    return {{"word", PredictorTables::Texts, categories},
            {"number", PredictorTables::Numbers, categories},
            {"level", PredictorTables::Bins, categories}};
}

TEST_P(BatchesAgainstOneByOne, Agree_ForEveryNumberOfTargetCategories) {
    Randomness random(5);
    for (const std::size_t categories : {1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 16U, 17U, 31U, 40U, 200U}) {
        SCOPED_TRACE(categories);
        for (const std::size_t known : {2U, 5U}) {
            const auto model = MakeShapedModel(categories, 0.5, Mixed(known), 0, random);
            ExpectBatchesLikeOneByOne(*model, 1100, random);
        }
    }
    const auto model = MakeShapedModel(1000, 0.5, Mixed(5), 0, random);
    ExpectBatchesLikeOneByOne(*model, 40, random);
}

/// Tables of up to sixteen rows, two of them for missing and unknown values, lie in registers; up to 256 rows are
/// numbered by bytes.
TEST_P(BatchesAgainstOneByOne, Agree_ForEveryNumberOfKnownValues) {
    Randomness random(6);
    for (const std::size_t known : {1U, 6U, 7U, 13U, 14U, 15U, 16U, 253U, 254U, 255U, 300U}) {
        SCOPED_TRACE(known);
        for (const std::size_t categories : {2U, 3U, 4U, 6U}) {
            const auto model = MakeShapedModel(categories, 0.001, Mixed(known), 0, random);
            ExpectBatchesLikeOneByOne(*model, 400, random);
        }
    }
}

/// The first few predictors with small tables are multiplied out beforehand, whatever is missing or unknown.
TEST_P(BatchesAgainstOneByOne, Agree_WhenTheFirstPredictorsAreMultipliedOut) {
    Randomness random(14);
    for (const std::size_t categories : {2U, 3U, 4U, 5U, 9U, 60U}) {
        SCOPED_TRACE(categories);
        for (const std::vector<std::size_t>& known : {std::vector<std::size_t>{1, 1, 1, 1, 1, 1},
                                                      {3, 3},
                                                      {2, 3, 5, 7, 9},
                                                      {15, 15, 2},
                                                      {254, 1, 1, 2},
                                                      {300, 2, 2}}) {
            std::vector<ShapedPredictor> predictors;
            for (std::size_t j = 0; j < known.size(); ++j) {
                predictors.push_back({"input " + std::to_string(j),
                                      j % 2 == 0 ? PredictorTables::Texts : PredictorTables::Numbers, known[j]});
            }
            ExpectBatchesLikeOneByOne(*MakeShapedModel(categories, 0.5, predictors, 0, random), 200, random);
        }
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForModelsThatLackSomething) {
    Randomness random(7);
    for (const std::size_t categories : {1U, 2U, 3U, 5U, 9U}) {
        SCOPED_TRACE(categories);
        for (const std::size_t withoutTable : {1U, 2U, 3U})
            ExpectBatchesLikeOneByOne(*MakeShapedModel(categories, 0.5, Mixed(4), withoutTable, random), 100, random);
        ExpectBatchesLikeOneByOne(*MakeShapedModel(categories, 0.5, {}, 0, random), 100, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_WhenPredictorsReadTheSameField) {
    Randomness random(8);
    for (const std::size_t categories : {2U, 3U, 5U}) {
        const std::vector<ShapedPredictor> predictors = {{"twice", PredictorTables::Texts, 5},
                                                         {"level", PredictorTables::Bins, 3},
                                                         {"twice", PredictorTables::Numbers, 9},
                                                         {"twice", PredictorTables::Texts, 3},
                                                         {"level", PredictorTables::Bins, 1}};
        ExpectBatchesLikeOneByOne(*MakeShapedModel(categories, 0.5, predictors, 0, random), 300, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForThresholdsWhoseProbabilitiesAreNoNumbers) {
    Randomness random(9);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double threshold : {0.0, -0.25, 5e-324, 1e-300, 1e300, infinity}) {
        SCOPED_TRACE(threshold);
        for (const std::size_t categories : {1U, 2U, 3U, 4U, 5U, 9U})
            ExpectBatchesLikeOneByOne(*MakeShapedModel(categories, threshold, Mixed(4), 0, random), 100, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForSetsOfEverySize) {
    Randomness random(10);
    for (const std::size_t subModels : {0U, 1U, 2U, 7U, 8U, 9U, 16U, 32U, 64U, 65U, 200U}) {
        SCOPED_TRACE(subModels);
        for (const std::size_t categories : {2U, 3U})
            ExpectBatchesLikeOneByOne(*MakeShapedSet(categories, subModels, random), 300, random);
    }
    ExpectBatchesLikeOneByOne(*MakeShapedSet(2, 8, random), 1100, random);
}

std::vector<std::size_t> DrawInputs(std::size_t inputs, std::size_t read, Randomness& random) {
    std::vector<std::size_t> all(inputs);
    std::iota(all.begin(), all.end(), std::size_t{0});
    std::ranges::shuffle(all, random);
    all.resize(read);
    return all;
}

TEST_P(BatchesAgainstOneByOne, Agree_ForManySubModelsNoTwoOfWhichReadTheSame) {
    Randomness random(15);
    for (const std::size_t categories : {2U, 5U}) {
        std::vector<std::vector<std::size_t>> inputs;
        for (int m = 0; m < 200; ++m)
            inputs.push_back(DrawInputs(40, 8, random));
        ExpectBatchesLikeOneByOne(*MakeSetReading(categories, inputs, random), 75, random);
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForSubModelsThatReadTheSame_WhereverTheyStand) {
    Randomness random(16);
    for (const std::size_t categories : {2U, 3U, 4U}) {
        for (const std::size_t alike : {6U, 8U, 17U, 45U, 80U}) {
            SCOPED_TRACE(alike);
            std::vector<std::vector<std::size_t>> inputs(alike, DrawInputs(12, 5, random));
            ExpectBatchesLikeOneByOne(*MakeSetReading(categories, inputs, random), 150, random);
            // Another one between them, and one that reads nothing.
            inputs.insert(inputs.begin() + 3, DrawInputs(12, 4, random));
            inputs.insert(inputs.begin() + 5, std::vector<std::size_t>());
            ExpectBatchesLikeOneByOne(*MakeSetReading(categories, inputs, random), 70, random);
        }
    }
}

TEST_P(BatchesAgainstOneByOne, Agree_ForSubModelsThatKnowDifferentValues) {
    Randomness random(11);
    ExpectBatchesLikeOneByOne(*MakeSetOfStrangers(65, 60, random), 100, random);
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, BatchesAgainstOneByOne, testing::ValuesIn(InstructionSets()),
                         NameOfInstructionSet);

}  // namespace
}  // namespace nbscore::test
