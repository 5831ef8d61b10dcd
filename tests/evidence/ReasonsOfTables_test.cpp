// The reasons that scoring a table adds are those that explaining each of its cases finds: over random documents, with
// cases that repeat, on one thread and on several.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cases/CaseTable.h"
#include "evidence/CaseExplainer.h"
#include "framework/BaseCaseRecord.h"
#include "framework/NumberText.h"
#include "host/PluginLibrary.h"
#include "output/HostError.h"
#include "support/FakeModel.h"
#include "support/TextSink.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "table/CsvReader.h"
#include "table/TableScorer.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;

constexpr std::size_t mostReasons = 3;

std::unique_ptr<ScoreModel> Parse(const std::string& text) {
    static const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    std::istringstream source(text);
    return std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8"));
}

using Rows = std::vector<std::vector<std::string>>;

/// The rows of a table without its header.
Rows ReadRows(const std::string& table) {
    std::istringstream input(table);
    CsvReader reader(input, "scores", ',');
    std::vector<std::string_view> cells;
    reader.ReadRow(cells);
    Rows rows;
    while (reader.ReadRow(cells))
        rows.emplace_back(cells.begin(), cells.end());
    return rows;
}

/// The reasons' cells of each row.
Rows ScoreWithReasons(ScoreModel& model, const std::string& table, ReasonKind kind, std::size_t threads) {
    TableScorerOptions options;
    options.threads = threads;
    options.output.onlyScores = true;
    options.output.reasons = {mostReasons, kind};
    std::istringstream input(table);
    TextSink sink;
    ScoreTable(model, input, "cases", sink, options, {});
    Rows rows = ReadRows(sink.text);
    for (std::vector<std::string>& row : rows)
        row.erase(row.begin(), row.end() - 3 * mostReasons);
    return rows;
}

/// The same by explaining a case.
/// @param names and @param cells of the table's columns.
std::vector<std::string> ExplainReasons(const CaseExplainer& explainer, const ScoreCaseRecord& record, ReasonKind kind,
                                        const std::vector<std::string>& names, const std::vector<std::string>& cells) {
    Evidence evidence;
    CaseExplainer::Memory memory;
    explainer.Explain(record, 0, {}, evidence, memory);
    std::vector<std::string> row;
    for (const std::size_t predictor : FindReasons(evidence, kind, mostReasons)) {
        const std::string& name = explainer.GetPredictors(0)[predictor];
        const auto column = std::ranges::find(names, name);
        const bool isInTable = column != names.end();
        row.push_back(name);
        row.push_back(isInTable ? cells[static_cast<std::size_t>(column - names.begin())]
                                : evidence.predictors[predictor].value);
        row.push_back(FormatNumber(*evidence.predictors[predictor].weight));
    }
    row.resize(3 * mostReasons);
    return row;
}

TEST(ReasonsOfTables, AreThoseOfExplainedCases_ForRandomDocuments) {
    Randomness random(31);
    int reasons = 0;
    for (int number = 0; number < 150 && !testing::Test::HasFailure(); ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document.text);
        const std::unique_ptr<ScoreModel> model = Parse(document.text);
        const CaseExplainer explainer(*model);
        std::vector<RandomCase> cases = DrawEach(30, [&] { return MakeRandomCase(document, random); });
        // Answers are remembered once they repeat after very many cases.
        const std::size_t repetitions = number % 10 == 0 ? 100 : 2;
        for (std::size_t i = 0; i < 30 * repetitions; ++i)
            cases.push_back(cases[i % 30]);
        const ReasonKind kind = OneIn(2, random) ? ReasonKind::Lifted : ReasonKind::HeldDown;
        const std::string table = CsvTableText(document.inputs, cases);
        const Rows actual = ScoreWithReasons(*model, table, kind, number % 2 == 0 ? 1 : 3);
        ASSERT_EQ(actual.size(), cases.size());
        BaseCaseRecord record(NamesOf(document.inputs));
        for (std::size_t i = 0; i < cases.size(); ++i) {
            FillRecord(record, document.inputs, cases[i].cells);
            EXPECT_EQ(actual[i], ExplainReasons(explainer, record, kind, NamesOf(document.inputs), cases[i].cells))
                << i;
            reasons += actual[i][0].empty() ? 0 : 1;
        }
    }
    EXPECT_GT(reasons, 5000);
}

TEST(ReasonsOfTables, HaveTheValuesOfDerivedFields) {
    Randomness random(32);
    int reasons = 0;
    for (int number = 0; number < 60 && !testing::Test::HasFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + made.document.text);
        const std::unique_ptr<ScoreModel> model = Parse(made.document.text);
        const CaseExplainer explainer(*model);
        std::vector<RandomCase> cases;
        for (int i = 0; i < 40; ++i)
            cases.push_back({MakeRandomDerivedCase(made, random).cells, {}});
        const Rows actual = ScoreWithReasons(*model, CsvTableText(made.columns, cases), ReasonKind::HeldDown, 1);
        ASSERT_EQ(actual.size(), cases.size());
        BaseCaseRecord record(NamesOf(made.columns));
        for (std::size_t i = 0; i < cases.size(); ++i) {
            FillRecord(record, made.columns, cases[i].cells);
            EXPECT_EQ(actual[i],
                      ExplainReasons(explainer, record, ReasonKind::HeldDown, NamesOf(made.columns), cases[i].cells))
                << i;
            reasons += actual[i][0].empty() ? 0 : 1;
        }
    }
    EXPECT_GT(reasons, 500);
}

TEST(ReasonsOfTables, AreRefused_WhenTheModelDoesNotLayItsTablesOpen) {
    FakeModel model;
    TableScorerOptions options;
    options.output.reasons.most = 1;
    std::istringstream input("x\n1\n");
    TextSink sink;
    EXPECT_THROW(ScoreTable(model, input, "cases", sink, options, {}), UnscorableModelError);
}

}  // namespace
}  // namespace nbscore::test
