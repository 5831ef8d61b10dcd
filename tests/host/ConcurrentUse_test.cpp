// A model that is loaded once and used from several threads at once, in every way that hosts have.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchScorer.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "output/MessageText.h"
#include "output/OutputSink.h"
#include "support/InThreads.h"
#include "support/TextSink.h"
#include "table/CaseBinder.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"

#include "table/TableScorer.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

struct Example {
    std::filesystem::path document;
    std::filesystem::path rows;
};

std::vector<Example> Examples() {
    const std::filesystem::path sources = NBSCORE_SOURCES;
    return {{sources / "examples/iris/iris.pmml", sources / "examples/iris/flowers.csv"},
            {sources / "examples/titanic/titanic.pmml", sources / "examples/titanic/people.csv"},
            {sources / "examples/offers/offers.pmml", sources / "examples/offers/customers.csv"},
            {sources / "tests/faults/documents/derived-fields.pmml",
             sources / "tests/faults/documents/derived-fields.csv"}};
}

LoadedModel Load(const Example& example) {
    LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), example.document);
    model.RequireScorable();
    return model;
}

std::string ScoreTwice(LoadedModel& model, const Example& example) {
    std::string text;
    for (const std::size_t threads : {1U, 2U}) {
        std::ifstream rows(example.rows, std::ios::binary);
        TextSink sink;
        TableScorerOptions options;
        options.threads = threads;
        ScoreTable(model.Get(), rows, "rows.csv", sink, options, [](const ScoringProgress&) {});
        text += sink.text;
    }
    return text;
}

std::string Verify(LoadedModel& model, const Example& example) {
    const auto summary = VerifyModel(
        model.Get(), SourceDocument::Read(ToUtf8(example.document)).ReadVerification(), [](const CellDifference&) {},
        [] {});
    return std::to_string(summary.cells) + " cells, " + std::to_string(summary.differences) + " differ";
}

/// By the contract, and by position.
std::string ScoreOneByOne(LoadedModel& model, const Example& example) {
    std::ifstream input(example.rows, std::ios::binary);
    CsvReader rows(input, "rows.csv", ',');
    std::vector<std::string_view> cells;
    rows.ReadRow(cells);
    CaseBinder binder(model.Get(), {cells.begin(), cells.end()}, "rows.csv", {});
    ReusedResult result;
    std::string text;
    while (rows.ReadRow(cells)) {
        const ScoreValue& prediction =
            *result.Score(model.Get(), binder.Bind(cells, rows.GetRowLine())).GetPrediction();
        const auto* scores = dynamic_cast<const VectorValue<SubModelScore>*>(&prediction);
        text += scores == nullptr ? prediction.GetString() : FormatNumber(scores->GetVectorValue().front().score);
        text += '\n';
    }
    return text;
}

std::string Look(LoadedModel& model, const Example&) {
    std::ostringstream out;
    model.Get().Display(out);
    // Whether positions are noted yet depends on the other threads.
    const bool isWhole = out.str().find("Dict var index set up? ") != std::string::npos;
    const std::size_t inputs = BatchScorer(model.Get()).GetInputs().size();
    return std::to_string(inputs) + (isWhole ? " inputs" : " inputs, cut off");
}

using Use = std::function<std::string(LoadedModel&, const Example&)>;

TEST(ConcurrentUse, AnswersAsItDoesAlone_FromTheFirstCaseOn) {
    const std::vector<Use> uses = {ScoreTwice, Verify, ScoreOneByOne, Look};
    for (const Example& example : Examples()) {
        SCOPED_TRACE(example.document.filename().string());
        std::vector<std::string> alone;
        for (const Use& use : uses) {
            LoadedModel model = Load(example);
            alone.push_back(use(model, example));
        }
        for (int round = 0; round < 5; ++round) {
            LoadedModel model = Load(example);
            const std::vector<int> same = InThreads([&](int thread) {
                const auto number = static_cast<std::size_t>(thread);
                return uses.at(number)(model, example) == alone.at(number) ? 1 : 0;
            });
            EXPECT_EQ(same, std::vector<int>(uses.size(), 1));
        }
    }
}

TEST(ConcurrentUse, LoadsModelsOnSeveralThreadsAtOnce) {
    const std::vector<Example> examples = Examples();
    std::vector<std::string> alone;
    for (const Example& example : examples) {
        LoadedModel model = Load(example);
        alone.push_back(ScoreTwice(model, example));
    }
    const std::vector<int> same = InThreads([&](int thread) {
        int count = 0;
        for (std::size_t i = 0; i < examples.size(); ++i) {
            const std::size_t number = (i + static_cast<std::size_t>(thread)) % examples.size();
            LoadedModel model = Load(examples[number]);
            if (ScoreTwice(model, examples[number]) == alone[number]) ++count;
        }
        return count;
    });
    EXPECT_EQ(same, std::vector<int>(same.size(), static_cast<int>(examples.size())));
}

}  // namespace
}  // namespace nbscore::test
