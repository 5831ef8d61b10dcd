// Random documents through the C interface: columns must have the scores that the table of the same cases has.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "c/ArrowRows.h"
#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "cases/CaseTable.h"
#include "host/LoadedModel.h"
#include "support/TextSink.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "table/TableScorer.h"

namespace nbscore::test {
namespace {

constexpr int documentsOfEachKind = 100;
constexpr int casesOfDocument = 30;

using Rows = std::vector<std::vector<std::string>>;

/// @param best of a set, how many of the highest scores; 0 for all.
Rows ScoreAsTable(LoadedModel& model, const std::string& csv, std::size_t best) {
    std::istringstream stream(csv);
    TextSink sink;
    TableScorerOptions options;
    options.output.onlyScores = true;
    if (best != 0) options.output.subModels.best = best;
    ScoreTable(model.Get(), stream, "rows.csv", sink, options, nullptr);
    return ReadRows(sink.text);
}

Rows ScoreAsColumns(const std::string& document, const std::string& csv, const ScoreModel& model, TextShape shape,
                    std::size_t best) {
    ErrorHandle error;
    const ModelHandle opened =
        Give<ModelHandle>(error, nbscore_open_memory, document.data(), document.size(), "a random document", nullptr);
    if (error != nullptr) return {{error->message}};
    const Rows rows = ReadRows(csv);
    ArrowTable table(static_cast<std::int64_t>(rows.size() - 1));
    AddRows(table, rows, model, ScoringRule::Smoothed, shape);
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.best = best;
    ArrowScores scores;
    nbscore_error* failure = nullptr;
    nbscore_score(opened.get(), &scoring, &table.GetSchema(), &table.GetArray(), &scores.array, &failure);
    error.reset(failure);
    if (error != nullptr) return {{error->message}};
    nbscore_score_schema(opened.get(), &scoring, &scores.schema, nullptr);
    Rows scored = {scores.GetNames()};
    for (std::int64_t entry = 0; entry < scores.array.length; ++entry)
        scored.push_back(scores.GetRow(entry));
    return scored;
}

void ExpectScoredAlike(const std::string& document, const std::string& csv, int number, std::size_t best = 0) {
    SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document + "\n" + csv);
    const auto plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
    std::istringstream source(document);
    LoadedModel model(plugin, std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8")));
    const auto shape = static_cast<TextShape>(number % 3);
    const Rows columns = ScoreAsColumns(document, csv, model.Get(), shape, best);
    ASSERT_EQ(ScoreAsTable(model, csv, best), columns);
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_BySingleClassifiers) {
    Randomness random(1);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomDocument made = MakeRandomDocument(random);
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomCase(made, random); });
        ExpectScoredAlike(made.text, CsvTableText(made.inputs, cases), number);
    }
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_WhereInputsAreDerived) {
    Randomness random(2);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomDerivedCase(made, random); });
        ExpectScoredAlike(made.document.text, CsvTableText(made.columns, cases), number);
    }
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_BySetsOfSubModels) {
    Randomness random(3);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomSet made = MakeRandomSet(random);
        if (made.subModels.empty()) continue;  // a table has no lines without columns
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomSetCase(made, random); });
        ExpectScoredAlike(made.text, CsvTableText(made.columns, cases), number);
        ExpectScoredAlike(made.text, CsvTableText(made.columns, cases), number, 3);
    }
}

}  // namespace
}  // namespace nbscore::test
