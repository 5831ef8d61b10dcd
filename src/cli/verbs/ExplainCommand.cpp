#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/EvidenceReport.h"
#include "cli/verbs/ModelArgument.h"
#include "evidence/CaseExplainer.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "output/HostError.h"
#include "table/CaseBinder.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Tell why the cases of a table are scored as they are.

MODEL and CASES are as for score. A Naive Bayes model multiplies a prior and a factor for each predictor; so the logarithm of the odds of one category against another one is a sum with a term for the prior and a weight for each predictor. These are shown: what speaks for the category is above 0, what speaks against it below. By default, of two categories the second one is weighed against the first one; of more, the predicted one against the most probable of the others. Of a self-learning document every sub-model is explained.

A predictor that is left out, because its value is missing or not known, has the weight 0 and says why. The column "against average" has the weight less the mean of the predictor's weights, each value taken as often as the document counted it: what this case's value says more than a usual one.

With --format csv there is a row for each term, with --format jsonl an object for each case, with the factors that multiply to its probabilities.)";

constexpr const char* footer = R"(Examples:

  See why the cases of a table are scored as they are:
    nbscore explain model.pmml cases.csv

  Only the third case:
    nbscore explain model.pmml cases.csv --row 3

  Why a flower is not taken for another kind:
    nbscore explain iris.pmml flowers.csv --against virginica

  One sub-model of a set, in decibans, for a program:
    nbscore explain offers.pmml customers.csv --model travel --units decibans --format csv)";

/// nbscore explain MODEL [CASES]: tells why the cases of a table are scored as they are.
///
/// Cases are explained one by one as they are read, in bounded memory.
class ExplainCommand : public Command {
public:
    explicit ExplainCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return model.GetDocumentName(); }

private:
    void DeclareChoice();
    std::vector<std::size_t> ChooseClassifiers(const CaseExplainer& explainer) const;
    std::optional<std::size_t> FindCategory(const CaseExplainer& explainer, const std::string& option,
                                            const std::optional<std::string>& category) const;
    AskedPair FindPair(const CaseExplainer& explainer) const;
    void Explain(const CaseExplainer& explainer, CaseInput& input, ScoreModel& scorable,
                 const OpenedOutput& opened) const;

    ModelArgument model;
    TableArgument table;
    OutputArgument output;
    EvidenceReportOptions report;
    std::optional<std::string> category;
    std::optional<std::string> against;
    std::optional<std::string> subModel;
    std::optional<std::uint64_t> row;
};

ExplainCommand::ExplainCommand(CLI::App& parent) : Command(parent, "explain", description) {
    app.footer(footer);
    model.DeclareDocument(app);
    table.DeclareCases(app);
    output.Declare(app);
    AddChoice(app, "--format", report.format,
              {{"text", EvidenceFormat::Text}, {"csv", EvidenceFormat::Csv}, {"jsonl", EvidenceFormat::JsonLines}},
              "Write text for people (text, the default), a table with a row for each term (csv) or one JSON object "
              "for each case, each on a line (jsonl).");
    AddChoice(app, "--units", report.inDecibans, {{"nats", false}, {"decibans", true}},
              "Give weights as natural logarithms (nats, the default) or as ten times decimal ones (decibans).");
    DeclareChoice();
    table.DeclareReading(app);
    model.DeclareReading(app);
    model.DeclareDensities(app);
}

void ExplainCommand::DeclareChoice() {
    app.add_option("--against", against,
                   "Weigh against this category of the target; the other one is the most probable of the rest, unless "
                   "--category names it.")
        ->type_name("CATEGORY");
    app.add_option("--category", category,
                   "Weigh this category of the target; against the most probable of the rest, unless --against names "
                   "another one.")
        ->type_name("CATEGORY");
    app.add_option("--model", subModel,
                   "For sub-models: explain this one alone. Where names are equal or empty, the sub-model's number "
                   "joins the name or stands for it, as in the columns of score.")
        ->type_name("NAME");
    const auto takeRow = [this](const std::string& text) {
        const int number = ReadInt(text).value_or(0);
        if (number < 1) throw CLI::ValidationError("--row", "'" + text + "' is no whole number above 0");
        row = static_cast<std::uint64_t>(number);
    };
    app.add_option_function<std::string>("--row", takeRow, "Explain the Nth case of the table alone, counted from 1.")
        ->type_name("N");
}

std::vector<std::size_t> ExplainCommand::ChooseClassifiers(const CaseExplainer& explainer) const {
    std::vector<std::size_t> all;
    for (std::size_t classifier = 0; classifier < explainer.GetNumClassifiers(); ++classifier)
        all.push_back(classifier);
    if (!subModel) return all;
    if (!explainer.IsSet()) {
        throw CLI::ValidationError(
            "--model", "it is for sets of sub-models, and '" + model.GetDocumentName() + "' holds a single classifier");
    }
    const std::vector<std::string> labels = LabelSubModels(explainer.GetSubModels());
    const auto found = std::ranges::find(labels, *subModel);
    if (found == labels.end()) {
        throw CLI::ValidationError("--model",
                                   "'" + *subModel + "' is no sub-model of '" + model.GetDocumentName() + "'");
    }
    return {static_cast<std::size_t>(found - labels.begin())};
}

std::optional<std::size_t> ExplainCommand::FindCategory(const CaseExplainer& explainer, const std::string& option,
                                                        const std::optional<std::string>& name) const {
    if (!name) return std::nullopt;
    const std::vector<std::string>& categories = explainer.GetCategories();
    const auto found = std::ranges::find(categories, *name);
    if (found != categories.end()) return static_cast<std::size_t>(found - categories.begin());
    constexpr std::size_t mostTold = 10;
    std::string known;
    for (std::size_t k = 0; k < std::min(categories.size(), mostTold); ++k)
        known += (k == 0 ? "" : ", ") + categories[k];
    if (categories.size() > mostTold) known += ", ...";
    throw CLI::ValidationError(option, "'" + *name + "' is no category of the target, which has " + known);
}

AskedPair ExplainCommand::FindPair(const CaseExplainer& explainer) const {
    const AskedPair pair{FindCategory(explainer, "--category", category),
                         FindCategory(explainer, "--against", against)};
    if (pair.category && pair.category == pair.against) {
        throw CLI::ValidationError("--against", "it names the category of --category");
    }
    return pair;
}

CaseExplainer MakeExplainer(ScoreModel& scorable) {
    try {
        return CaseExplainer(scorable);
    } catch (const std::invalid_argument& error) {
        throw UnscorableModelError(error.what());
    }
}

ExitStatus ExplainCommand::Run(Console& console) {
    const TimeLimit timeLimit(model.GetReading().GetMaxTime());
    if (report.format == EvidenceFormat::JsonLines) model.HushPlugin();
    const LoadedModel loaded = model.ReadScorable(model.Parse(console), console);
    const CaseExplainer explainer = MakeExplainer(loaded.Get());
    FindPair(explainer);
    ChooseClassifiers(explainer);

    std::optional<CaseInput> input(std::in_place, table.GetCases());
    TableArgument::ExplainTyping(*input, console);
    const OpenedOutput opened = output.Open(console, model.GetDocumentName());
    Explain(explainer, *input, loaded.Get(), opened);
    Interrupts::ThrowIfRequested();
    // The table may be what is replaced, and Windows replaces no file that is open.
    input.reset();
    opened.Commit();
    return ExitStatus::Fine;
}

/// What a plug-in throws is told as such.
/// @param record null for the one before, for another classifier.
void ExplainOne(const CaseExplainer& explainer, const ScoreCaseRecord* record, std::size_t classifier,
                const AskedPair& pair, Evidence& evidence, CaseExplainer::Memory& memory) {
    try {
        if (record == nullptr) {
            explainer.ExplainAnother(classifier, pair, evidence, memory);
        } else {
            explainer.Explain(*record, classifier, pair, evidence, memory);
        }
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
}

void ExplainCommand::Explain(const CaseExplainer& explainer, CaseInput& input, ScoreModel& scorable,
                             const OpenedOutput& opened) const {
    const AskedPair pair = FindPair(explainer);
    const std::vector<std::size_t> classifiers = ChooseClassifiers(explainer);
    const std::vector<std::string> labels = LabelSubModels(explainer.GetSubModels());
    const std::string& source = input.GetName();
    CsvReader rows(input.GetStream(), source, table.GetDelimiter());
    std::vector<std::string_view> cells;
    if (!rows.ReadRow(cells)) throw CaseDataError(source, 0, "the table is empty: it has no header");
    CaseBinder binder(scorable, {cells.begin(), cells.end()}, source, table.GetBinding());

    EvidenceReportOptions options = report;
    options.hasBars = opened.isTerminal;
    options.delimiter = table.GetDelimiter();
    const auto writer = MakeEvidenceReport(options, source, explainer.IsSet());
    const Limits& limits = model.GetReading().GetLimits();
    std::string text;
    writer->AppendHeader(text);
    Evidence evidence;
    CaseExplainer::Memory memory;
    std::uint64_t read = 0;
    while (rows.ReadRow(cells)) {
        limits.ThrowIfCancelled();
        const ScoreCaseRecord* record = &binder.Bind(cells, rows.GetRowLine());
        ++read;
        if (row && read != *row) continue;
        for (const std::size_t classifier : classifiers) {
            ExplainOne(explainer, std::exchange(record, nullptr), classifier, pair, evidence, memory);
            writer->AppendCase(text, {.row = read,
                                      .line = rows.GetRowLine(),
                                      .subModel = explainer.IsSet() ? &labels[classifier] : nullptr,
                                      .categories = explainer.GetCategories(),
                                      .predictors = explainer.GetPredictors(classifier),
                                      .evidence = evidence});
            opened.sink.Write(text);
            text.clear();
        }
        opened.sink.Flush();
        if (row) break;
    }
    if (row && read < *row) {
        throw CaseDataError(source, 0,
                            "there is no row " + std::to_string(*row) + ": the table has " + CountedNoun(read, "case"));
    }
    if (read == 0 && !table.AllowsEmpty()) throw CaseDataError(source, 0, "the table has a header and no cases");
    opened.sink.Write(text);
}

}  // namespace

std::unique_ptr<Command> MakeExplainCommand(CLI::App& parent) {
    return std::make_unique<ExplainCommand>(parent);
}

}  // namespace nbscore
