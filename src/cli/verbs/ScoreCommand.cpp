#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "cli/system/Interrupts.h"
#include "cli/system/Progress.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/ModelArgument.h"
#include "cli/verbs/RunFindings.h"
#include "framework/NumberText.h"
#include "output/HostError.h"
#include "table/ModelResults.h"
#include "table/TableScorer.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Score every row of a table with a model.

MODEL is a PMML document with a Naive Bayes model. CASES is a table of comma-separated values in UTF-8: the first line names the columns, each further row is one case. Without CASES, or with "-", the table is read from standard input. Columns are matched to the model's fields by name, in any order; columns that the model does not know are passed on. An empty cell is a missing value. Texts are taken as they stand, blanks included; around a number blanks may stand.

The result has one row for each case, in the same order: all columns of the input, then predicted_TARGET, confidence (the probability of the prediction) and probability_CATEGORY for each category of the target. With --format jsonl it has one JSON object for each case instead. With --rule standard, which gives the answers of other producers of documents, a document's Output names what is added; a case that has no result has empty cells.

A self-learning document holds sub-models, such as one for each offer. Then the result has score_NAME for each of them: the probability of the target's second category. Where names are equal or empty, the sub-model's number, counted from 0, joins the name or stands for it. See --long and --best for other shapes; as JSON the scores are the list "models".

Rows are written as they are read, in bounded memory, so a table may have any size; with --output it may also be replaced by its own result. When the run is long and standard error is a terminal that does not show the results too, a line there tells how far it has come.)";

constexpr const char* footer = R"(Examples:

  Score a table and see the result:
    nbscore score model.pmml cases.csv

  Keep the result in a file, without the input's own columns:
    nbscore score model.pmml cases.csv --only-scores -o scores.csv

  Semicolons between cells, texts in numeric columns taken as missing:
    nbscore score model.pmml cases.csv --delimiter ";" --bad-values missing

  The three best offers for each customer, from a document of sub-models:
    nbscore score offers.pmml customers.csv --best 3

  A document that other software wrote, with the answers that it gives:
    nbscore score model.pmml cases.csv --rule standard

  In a pipeline, as one JSON object a case:
    zcat cases.csv.gz | nbscore score model.pmml --format jsonl --quiet)";

constexpr int mostThreads = 1024;
constexpr int mostReasons = 1000;

bool ShowsProgress(const Console& console, const OpenedOutput& opened, bool quiet) {
    return !quiet && console.messagesTerminal != nullptr && !opened.isTerminal;
}

void WarnOfBrokenArithmetic(Console& console, const std::string& source, std::uint64_t line) {
    console.messages << "warning: " << MakePrintable(source) << ':' << line
                     << ": a probability came out as no number or infinite here, and perhaps in later cases: the "
                        "model's threshold or counts are too extreme for its arithmetic\n";
}

/// nbscore score MODEL [CASES]: scores every row of a table with a model.
///
/// The rows come as a stream from a file or from standard input, and go in the same order to standard output
/// or to a file that appears when it is whole. The document is read and found fit to score before the first
/// row is.
class ScoreCommand : public Command {
public:
    explicit ScoreCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return model.GetDocumentName(); }

private:
    void DeclareResultOptions();
    void DeclareSubModelOptions();
    void DeclareReasonOptions();
    void DeclareFindingsOptions();
    void RequireSensibleOptions() const;
    void RequireOptionsOfASingleClassifier() const;
    void RequireColumnsOf(const ScoreModel& scorable) const;
    void CheckAgainstModel(ScoreModel& scorable, Console& console) const;
    OpenedFile OpenSummary() const;
    ScoringSummary Score(LoadedModel& loaded, CaseInput& input, const OpenedOutput& opened, Console& console) const;
    ExitStatus Finish(const ScoringSummary& summary, const std::string& inputName, const OpenedOutput& opened,
                      const OpenedFile& summaryOpened, Console& console) const;

    ModelArgument model;
    TableArgument table;
    OutputArgument output;
    std::string summaryFile;
    TableScorerOptions options;
    std::optional<ResultColumns> columns;
    bool strict = false;
    bool quiet = false;
};

ScoreCommand::ScoreCommand(CLI::App& parent) : Command(parent, "score", description) {
    app.footer(footer);
    options.threads = std::max(1U, std::thread::hardware_concurrency());
    model.DeclareDocument(app);
    table.DeclareCases(app);
    output.Declare(app);
    DeclareResultOptions();
    DeclareReasonOptions();
    DeclareSubModelOptions();
    table.DeclareReading(app);
    model.DeclareReading(app);
    model.DeclareDensities(app);
    const auto takeThreads = [this](const std::string& text) {
        const int count = ReadInt(text).value_or(0);
        if (count < 1 || count > mostThreads) {
            throw CLI::ValidationError("--threads",
                                       "'" + text + "' is no whole number from 1 to " + std::to_string(mostThreads));
        }
        options.threads = static_cast<std::size_t>(count);
    };
    app.add_option_function<std::string>("--threads", takeThreads,
                                         "Score on N threads; as many as there are processors if not given. The result "
                                         "is the same for any number.")
        ->type_name("N");
    DeclareFindingsOptions();
    app.add_flag("--quiet", quiet, "Show no progress, no remarks and no notes. Errors and warnings are still shown.");
}

void ScoreCommand::DeclareFindingsOptions() {
    app.add_flag("--strict", strict,
                 "Take it as an error, with exit status 1, when a row has a value that the model does not know, no "
                 "value that it knows, or no result. A file of --output is not written then.");
    app.add_option("--summary", summaryFile,
                   "Write to FILE, as JSON, how many rows there were, how many had a value of each field that the "
                   "model does not know, no known value, or no result. It is written under --strict, too, when that "
                   "makes an error of them. When it cannot be written, a file of --output stays as it was.")
        ->type_name("FILE")
        ->check(RefuseEmptyName);
}

void ScoreCommand::DeclareResultOptions() {
    AddChoice(
        app, "--columns", columns, {{"output", ResultColumns::Output}, {"usual", ResultColumns::Usual}},
        "By the standard's rule: add what the document's Output asks for, by its names (output, the default for a "
        "document with an Output), or the prediction, its confidence and the probabilities (usual).");
    AddChoice(app, "--format", options.output.format, {{"csv", ScoreFormat::Csv}, {"jsonl", ScoreFormat::JsonLines}},
              "Write a table (csv, the default) or one JSON object for each case, each on a line (jsonl), which "
              "never holds the input's columns.");
    app.add_flag("--only-scores", options.output.onlyScores, "Leave the input's own columns out of the result.");
    app.add_flag("--prediction-only", options.output.predictionOnly,
                 "Give the prediction alone: no confidence, no probabilities. By the standard's rule it is called as "
                 "the document's Output calls it. Of sub-models: no assessment figures.");
    app.add_option("--prefix", options.output.prefix,
                   "Begin the name of each column that scoring adds with TEXT. Needed when the input has a column of "
                   "the same name. Not for jsonl.")
        ->type_name("TEXT");
}

void ScoreCommand::DeclareReasonOptions() {
    ReasonOptions& reasons = options.output.reasons;
    const auto takeReasons = [&reasons](const std::string& text) {
        const int most = ReadInt(text).value_or(0);
        if (most < 1 || most > mostReasons) {
            throw CLI::ValidationError("--reasons",
                                       "'" + text + "' is no whole number from 1 to " + std::to_string(mostReasons));
        }
        reasons.most = static_cast<std::size_t>(most);
    };
    CLI::Option* const count =
        app.add_option_function<std::string>(
               "--reasons", takeReasons,
               "For a single classifier: add the N predictors that held the category down most, as reason_1_field, "
               "reason_1_value, reason_1_weight, reason_2_field and so on; as JSON the list \"reasons\". Of two "
               "categories the second one is meant, against the first one; of more the predicted one, against the next "
               "probable. Empty where a case has fewer. The command explain shows all.")
            ->type_name("N");
    AddChoice(app, "--reasons-that", reasons.kind, {{"hold-down", ReasonKind::HeldDown}, {"lift", ReasonKind::Lifted}},
              "Which reasons: predictors that held the category down most (hold-down, the default), or that lifted it "
              "most (lift).")
        ->needs(count);
}

void ScoreCommand::DeclareSubModelOptions() {
    SubModelOptions& subModels = options.output.subModels;
    app.add_flag(
        "--long", subModels.longRows,
        "For sub-models: write a row for each case and sub-model, with the columns model, score, "
        "assessment_mean and assessment_std_dev, instead of a column for each sub-model. A model is called as in "
        "the names of those columns. Not for jsonl.");
    const auto takeBest = [&subModels](const std::string& text) {
        const int best = ReadInt(text).value_or(0);
        if (best < 1) throw CLI::ValidationError("--best", "'" + text + "' is no whole number above 0");
        subModels.best = static_cast<std::size_t>(best);
    };
    app.add_option_function<std::string>(
           "--best", takeBest,
           "For sub-models: keep each case's N highest scores, best first; equal ones in the model's order. A case "
           "that says "
           "nothing to a sub-model has its raw prior as score, which is ranked as it stands. Without "
           "--long the columns are then best_1_model, best_1_score, best_2_model and so on.")
        ->type_name("N");
}

void ScoreCommand::RequireSensibleOptions() const {
    if (options.output.format == ScoreFormat::JsonLines && !options.output.prefix.empty()) {
        throw CLI::ValidationError("--prefix", "it names columns, and --format jsonl has none");
    }
    if (options.output.format == ScoreFormat::JsonLines && options.output.subModels.longRows) {
        throw CLI::ValidationError("--long", "it shapes the rows of a table, and --format jsonl has none");
    }
    if (columns == ResultColumns::Output && options.output.predictionOnly) {
        throw CLI::ValidationError("--columns", "output is more than --prediction-only gives");
    }
}

void ScoreCommand::RequireOptionsOfASingleClassifier() const {
    const SubModelOptions& subModels = options.output.subModels;
    if (!subModels.longRows && !subModels.best) return;
    throw CLI::ValidationError(
        subModels.longRows ? "--long" : "--best",
        "it is for sets of sub-models, and '" + model.GetDocumentName() + "' holds a single classifier");
}

void ScoreCommand::RequireColumnsOf(const ScoreModel& scorable) const {
    if (columns != ResultColumns::Output || !FindOutputColumns(scorable, options.output).empty()) return;
    throw CLI::ValidationError("--columns",
                               model.GetReading().GetRule() == ScoringRule::Standard
                                   ? "'" + model.GetDocumentName() + "' has no Output that names columns"
                                   : std::string("what an Output asks for is computed by --rule standard only"));
}

/// Remarks on the options that need the model.
void ScoreCommand::CheckAgainstModel(ScoreModel& scorable, Console& console) const {
    const std::optional<std::vector<std::string>> subModels = FindSubModelNames(scorable);
    RequireColumnsOf(scorable);
    if (subModels && options.output.reasons.most > 0) {
        throw CLI::ValidationError("--reasons", "it is for single classifiers, and '" + model.GetDocumentName() +
                                                    "' holds a set of sub-models, which explain can show");
    }
    if (!subModels) {
        RequireOptionsOfASingleClassifier();
    } else if (subModels->empty() && !quiet) {
        console.messages << "note: " << MakePrintable(model.GetDocumentName())
                         << ": the model has no sub-models: there are no scores\n";
    }
}

ExitStatus ScoreCommand::Run(Console& console) {
    RequireSensibleOptions();
    options.output.columns = columns.value_or(ResultColumns::Output);
    const TimeLimit timeLimit(model.GetReading().GetMaxTime());
    if (options.output.format == ScoreFormat::JsonLines) model.HushPlugin();
    LoadedModel loaded = model.ReadScorable(model.Parse(console, quiet), console, quiet);
    CheckAgainstModel(loaded.Get(), console);

    std::optional<CaseInput> input(std::in_place, table.GetCases());
    const std::string inputName = input->GetName();
    if (!quiet) TableArgument::ExplainTyping(*input, console);
    const OpenedOutput opened = output.Open(console, model.GetDocumentName());
    const OpenedFile summaryOpened = OpenSummary();
    const ScoringSummary summary = Score(loaded, *input, opened, console);
    Interrupts::ThrowIfRequested();
    // The table may be what is replaced, and Windows replaces no file that is open.
    input.reset();
    return Finish(summary, inputName, opened, summaryOpened, console);
}

ExitStatus ScoreCommand::Finish(const ScoringSummary& summary, const std::string& inputName, const OpenedOutput& opened,
                                const OpenedFile& summaryOpened, Console& console) const {
    const std::vector<std::string> findings = TellFindings(summary, inputName);
    const bool isRefused = strict && (!findings.empty() || !summary.counts.areTold);
    // The result comes last, so that it stays as it was when the summary cannot be written.
    if (!summaryFile.empty()) {
        summaryOpened.GetSink().Write(WriteSummaryAsJson(summary, model.GetDocumentName(), inputName));
        summaryOpened.GetSink().Commit();
    }
    if (!isRefused) opened.Commit();
    if (summary.firstNonFiniteLine != 0) WarnOfBrokenArithmetic(console, inputName, summary.firstNonFiniteLine);
    if (isRefused && !summary.counts.areTold) {
        throw CaseDataError(inputName, 0, "--strict cannot be kept: the plug-in does not tell what its model knows");
    }
    for (const std::string& finding : findings) {
        if (isRefused || !quiet)
            console.messages << (isRefused ? "error: " : "note: ") << MakePrintable(finding) << '\n';
    }
    return isRefused ? ExitStatus::CaseDataRefused : ExitStatus::Fine;
}

/// Before the first row, so that a long run does not end for the want of it.
OpenedFile ScoreCommand::OpenSummary() const {
    if (summaryFile.empty()) return {};
    const auto refuseIf = [this](bool isSame, const std::string& what) {
        if (isSame) throw CLI::ValidationError("--summary", "'" + summaryFile + "' is " + what);
    };
    refuseIf(summaryFile == "-", "no file: the scores go to standard output");
    refuseIf(NameOneFile(summaryFile, model.GetDocumentName()), "the model's own document");
    const bool isTable = table.GetCases() == "-" ? IsStandardInput(PathFromArgument(summaryFile))
                                                 : NameOneFile(summaryFile, table.GetCases());
    refuseIf(isTable, "the table");
    refuseIf(output.GetDestination() != "-" && NameOneFile(summaryFile, output.GetDestination()), "the result");
    OpenedFile opened = OpenFile(summaryFile);
    UnfinishedOutput::SetFurtherTemporaryFile(opened.file->GetTemporaryPath());
    return opened;
}

ScoringSummary ScoreCommand::Score(LoadedModel& loaded, CaseInput& input, const OpenedOutput& opened,
                                   Console& console) const {
    std::optional<Progress> progress;
    if (ShowsProgress(console, opened, quiet))
        progress.emplace(*console.messagesTerminal, input.GetSize(), console.now);
    const auto onProgress = [&progress](const ScoringProgress& state) {
        Interrupts::ThrowIfRequested();
        if (progress) progress->Update(state);
    };
    TableScorerOptions scoring = options;
    scoring.delimiter = scoring.output.delimiter = table.GetDelimiter();
    scoring.cases = table.GetBinding();
    scoring.allowEmpty = table.AllowsEmpty();
    scoring.limits = model.GetReading().GetLimits();
    return ScoreTable(loaded.Get(), input.GetStream(), input.GetName(), opened.sink, scoring, onProgress);
}

}  // namespace

std::unique_ptr<Command> MakeScoreCommand(CLI::App& parent) {
    return std::make_unique<ScoreCommand>(parent);
}

}  // namespace nbscore
