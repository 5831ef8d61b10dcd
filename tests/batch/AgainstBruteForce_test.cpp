// Batches against scorers that write the formulas down one after the other: every answer to the last bit.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <sstream>

#include "batch/Answers.h"
#include "batch/InstructionSets.h"
#include "cases/CaseTable.h"
#include "host/PluginLibrary.h"
#include "naivebayes/ModelParts.h"
#include "support/BruteForceScorer.h"
#include "support/BruteForceSetScorer.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"

namespace nbscore::test {
namespace {

constexpr std::size_t casesPerDocument = 37;

class BatchesAgainstBruteForce : public WithInstructionSet {};

std::unique_ptr<ScoreModel> Parse(const std::string& text) {
    static const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    std::istringstream source(text);
    return std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8"));
}

CaseValue ValueOf(const RandomInput& input, const std::string& cell) {
    if (cell.empty()) return std::monostate();
    if (input.IsNumeric()) return std::strtod(cell.c_str(), nullptr);
    return cell;
}

InputTable EmptyTable(std::vector<std::string> names) {
    InputTable table;
    table.cases = casesPerDocument;
    table.names = std::move(names);
    table.columns.resize(table.names.size());
    return table;
}

void Append(const BruteForceScore& score, Answers& expected) {
    expected.predicted.push_back(score.prediction);
    expected.confidence.push_back(score.confidence);
    expected.matrix.insert(expected.matrix.end(), score.probabilities.begin(), score.probabilities.end());
}

/// Counting is compared elsewhere.
void ExpectSameScores(Answers expected, const Answers& actual) {
    expected.missing = actual.missing;
    expected.unknown = actual.unknown;
    EXPECT_EQ(FirstDifference(expected, actual), "");
}

TEST_P(BatchesAgainstBruteForce, Agree_ForRandomDocuments) {
    Randomness random(20240229);
    for (int number = 0; number < 300 && !HasFailure(); ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE(document.text);
        InputTable table = EmptyTable(NamesOf(document.inputs));
        Answers expected;
        for (std::size_t i = 0; i < casesPerDocument; ++i) {
            const RandomCase made = MakeRandomCase(document, random);
            for (std::size_t j = 0; j < made.cells.size(); ++j)
                table.columns[j].push_back(ValueOf(document.inputs[j], made.cells[j]));
            Append(ScoreByBruteForce(document.model, made.codes), expected);
        }
        ExpectSameScores(expected, AnswersInBatches(BatchEngine(*Parse(document.text)), table, {16, 5}, random));
    }
}

/// The columns of a set's inputs, derived ones among them, made of the columns that they rename.
InputTable TableOfInputs(const BatchEngine& engine, const RandomSet& set, const std::vector<RandomSetCase>& cases) {
    std::map<std::string, std::size_t> columns;
    for (std::size_t i = 0; i < set.columns.size(); ++i)
        columns[set.columns[i].name] = i;
    for (std::size_t i = 0; i < set.derivedNames.size(); ++i)
        columns[set.derivedNames[i]] = set.derivedColumns[i];
    std::vector<std::string> names;
    for (const BatchInput& input : engine.GetInputs())
        names.push_back(input.name);
    InputTable table = EmptyTable(names);
    for (std::size_t input = 0; input < names.size(); ++input) {
        const std::size_t column = columns.at(names[input]);
        for (const RandomSetCase& made : cases)
            table.columns[input].push_back(ValueOf(set.columns[column], made.cells[column]));
    }
    return table;
}

TEST_P(BatchesAgainstBruteForce, Agree_ForRandomSetsWithDerivedInputs) {
    Randomness random(20240301);
    for (int number = 0; number < 300 && !HasFailure(); ++number) {
        const RandomSet set = MakeRandomSet(random);
        SCOPED_TRACE(set.text);
        std::vector<BruteForceSubModel> plain;
        for (const RandomSubModel& subModel : set.subModels)
            plain.push_back(subModel.numbers);
        std::vector<RandomSetCase> cases;
        Answers expected;
        for (std::size_t i = 0; i < casesPerDocument; ++i) {
            cases.push_back(MakeRandomSetCase(set, random));
            const std::vector<double> scores = ScoreSetByBruteForce(plain, cases.back().codes);
            expected.matrix.insert(expected.matrix.end(), scores.begin(), scores.end());
        }
        const BatchEngine engine(*Parse(set.text));
        ExpectSameScores(expected, AnswersInBatches(engine, TableOfInputs(engine, set, cases), {16, 5}, random));
    }
}

/// No document may declare a target's value twice; a model that is configured by calls may have it so.
TEST_P(BatchesAgainstBruteForce, Agree_WhenTargetValuesAreEqual) {
    Randomness random(7);
    const BruteForceModel plain{0.5, {3, 1, 3, 2}, {{{3, 1, 3, 0}, {1, 1, 1, 1}}}};
    const auto model = MakeModel(plain.threshold, TextVariable("target", {"a", "b", "a", "b"}), plain.targetCounts,
                                 {{"x", {"0", "1"}, plain.counts[0]}});
    InputTable table = EmptyTable({"x"});
    Answers expected;
    for (std::size_t i = 0; i < casesPerDocument; ++i) {
        const int code = Between(-1, 1, random);
        table.columns[0].push_back(code < 0 ? CaseValue() : CaseValue(std::to_string(code)));
        Append(ScoreByBruteForce(plain, {code}), expected);
    }
    const BatchEngine engine(*model);
    EXPECT_EQ(engine.GetCategories(), (std::vector<std::string>{"a", "b", "a", "b"}));
    ExpectSameScores(expected, AnswersInBatches(engine, table, {16, 5}, random));
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, BatchesAgainstBruteForce, testing::ValuesIn(InstructionSets()),
                         NameOfInstructionSet);

}  // namespace
}  // namespace nbscore::test
