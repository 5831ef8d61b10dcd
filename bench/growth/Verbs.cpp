#include "growth/Verbs.h"

#include <ctime>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "batch/BatchScorer.h"
#include "check/DocumentCheck.h"
#include "framework/BaseCaseRecord.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "table/ModelResults.h"
#include "table/TableScorer.h"
#include "verify/ModelVerifier.h"

namespace nbscore::bench {
namespace {

using Path = std::filesystem::path;

/// Counts what is written and drops it.
class Nowhere : public OutputSink {
public:
    void Write(std::string_view bytes) override { size += bytes.size(); }
    void Commit() override {}
    std::size_t GetSize() const { return size; }

private:
    std::size_t size = 0;
};

void Demand(bool condition, const char* what) {
    if (!condition) throw std::runtime_error(what);
}

void MakeScorer(const ScoreModel& model) {
    const BatchScorer scorer(model);
    const std::string_view text = "red";
    for (std::size_t input = 0; input < scorer.GetInputs().size(); ++input)
        Demand(scorer.MakeDictionary(input, std::span(&text, 1)).GetSize() == 1, "a dictionary is empty");
}

class Verbs {
public:
    Verbs(Path documentFile, Path tableFile, std::string onlyVerb)
        : document(std::move(documentFile)), table(std::move(tableFile)), only(std::move(onlyVerb)) {}

    std::vector<VerbTime> Time() {
        std::optional<LoadedModel> model;
        std::optional<SourceDocument> source;
        Take("parse", [&] { source.emplace(SourceDocument::Read(document.string())); });
        Take("adapt", [&] { source->Adapt(); });
        Take("load", [&] { model.emplace(LoadedModel::Read(plugin, *source)); });
        Take("judge", [&] { model->RequireScorable(); });
        Take("batch", [&] { MakeScorer(model->Get()); });
        const BaseCaseRecord record = MakeRecord(model->Get());
        ReusedResult result;
        Take("first score", [&] { result.Score(model->Get(), record); });
        Take("score", [&] { result.Score(model->Get(), record); });
        Take("table", [&] { ScoreTable(*model); });
        Take("display", [&] {
            std::ostringstream text;
            model->Get().Display(text);
            Demand(!text.str().empty(), "nothing was displayed");
        });
        Take("check", [&] {
            const DocumentCheck check = CheckDocument(plugin, document, true);
            Demand(check.model.has_value() && !WriteCheckAsText(check).empty(), "the check found errors");
        });
        Take("verify", [&] { Verify(model->Get(), *source); });
        return times;
    }

private:
    template <typename Do>
    void Take(const std::string& verb, const Do& act) {
        const bool isNeededByAll = verb == "parse" || verb == "load";
        if (!only.empty() && verb != only && !isNeededByAll) return;
        const std::clock_t start = std::clock();
        act();
        times.push_back({verb, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC});
    }

    static BaseCaseRecord MakeRecord(const ScoreModel& model) {
        std::vector<ScoreDictVar*> fields;
        model.GetDictionary()->GetAllVars(fields);
        std::vector<std::string> names;
        for (const ScoreDictVar* field : fields)
            names.push_back(field->GetName());
        BaseCaseRecord record(names);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields[i]->GetStorageType() == ScoreDictVar::NumericStorage) {
                record.SetNumber(static_cast<int>(i), 3);
            } else {
                record.SetText(static_cast<int>(i), "red");
            }
        }
        return record;
    }

    void ScoreTable(LoadedModel& model) const {
        std::ifstream input(table, std::ios::binary);
        Nowhere output;
        const ScoringSummary summary =
            nbscore::ScoreTable(model.Get(), input, table.string(), output, {}, [](const auto&) {});
        Demand(summary.rows > 0 && output.GetSize() > 0, "nothing was scored");
    }

    static void Verify(ScoreModel& model, const SourceDocument& source) {
        const std::vector<VerificationSuite> suites = source.ReadVerification();
        std::size_t differences = 0;
        const VerificationSummary summary = VerifyModel(
            model, suites, [&](const CellDifference&) { ++differences; }, [] {});
        Demand(suites.empty() || summary.cells > 0, "nothing was verified");
    }

    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN_FILE);
    Path document;
    Path table;
    std::string only;
    std::vector<VerbTime> times;
};

}  // namespace

std::vector<VerbTime> TimeVerbs(const Path& document, const Path& table, const std::string& only) {
    return Verbs(document, table, only).Time();
}

}  // namespace nbscore::bench
