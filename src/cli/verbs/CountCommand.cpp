#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "cli/system/Interrupts.h"
#include "cli/system/Progress.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/CountedDocuments.h"
#include "count/ModelBuilder.h"
#include "count/TableCounter.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "output/HostError.h"
#include "table/CsvReader.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Make a model of a table by counting.

TABLE is a table of cases whose categories are known: comma-separated values in UTF-8, as for nbscore score. The first line names the columns, each further row is one case. Without TABLE, or with "-", it is read from standard input. The column of --target has the category of each case. How often each value of the other columns occurred with each category is counted, and becomes a PMML document with a Naive Bayes model, which nbscore score and others can read. It carries test cases, so that nbscore verify can tell whether the model answers elsewhere as it does here.

All other columns become inputs, unless --inputs or --ignore say otherwise. Texts, and whole numbers of at most 20 different values, are counted value by value; other numbers are cut into bins. An empty cell is a missing value; how many there are is told, and stands in the document. Left out, and told, are columns without any value, identifiers (at least 20 rows, and more than nine in ten values different) and texts of more different values than are kept. A case without a category is not counted.

The table is read once, in bounded memory, on all processors. The document is the same for any number of threads and any order of the rows.)";

constexpr const char* footer = R"(Examples:

  Make a model, and score with it:
    nbscore count customers.csv --target bought -o model.pmml
    nbscore score model.pmml prospects.csv

  With cutpoints of your own for a column of numbers, and without a column:
    nbscore count customers.csv --target bought --cutpoints age=18,30,65 --ignore name -o model.pmml

  Add the cases of a new day to what was counted before:
    nbscore count today.csv --into model.pmml -o model.pmml

  A sub-model for each offer, from a table that says which offer each customer got and whether it was accepted:
    nbscore count offers.csv --target accepted --sub-models-by offer -o offers.pmml)";

constexpr int mostThreads = 1024;
constexpr int mostBins = 1000;

std::string QuoteArgument(const std::string& text) {
    return "'" + text + "'";
}

/// Names with commas between them. One that holds a comma stands in quotes, as in a table.
std::vector<std::string> ReadNames(const std::string& option, const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string_view> cells;
    try {
        CsvReader reader(input, option, ',');
        reader.ReadRow(cells);
        std::vector<std::string> names(cells.begin(), cells.end());
        const bool areAllNamed = std::ranges::none_of(names, &std::string::empty);
        if (!names.empty() && areAllNamed && !reader.ReadRow(cells)) return names;
    } catch (const CaseDataError&) {
        // Said below.
    }
    throw CLI::ValidationError(option, QuoteArgument(text) + " is no list of names with commas between");
}

/// nbscore count TABLE: makes a model of a table by counting.
class CountCommand : public Command {
public:
    explicit CountCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return earlier; }

private:
    void DeclareColumns();
    void DeclareNumbers();
    void DeclareEarlierCounts();
    void DeclareReading();
    void TakeCutpoints(const std::string& text);
    template <typename Number>
    void AddNumber(const std::string& option, const std::string& word, double least, double most, bool isWhole,
                   const std::string& wanted, Number& target, const std::string& description);

    void RequireSensibleOptions() const;
    CountOptions MakeOptions(const std::optional<CountedModel>& old) const;
    TableTotals Count(const CountOptions& counting, const OpenedOutput& opened, Console& console,
                      std::string& tableName) const;
    void Tell(Console& console, const std::string& tableName, const std::vector<std::string>& notes) const;

    std::string table = "-";
    OutputArgument output;
    CountOptions options;
    std::vector<std::string> inputs;
    std::vector<std::string> categorical;
    std::vector<ColumnPlan> cutpoints;
    std::optional<int> bins;
    std::optional<Binning> binning;
    std::optional<double> minCount;
    std::optional<double> threshold;
    std::string earlier;
    std::optional<double> forget;
    ReadingArgument reading;
    bool quiet = false;
};

CountCommand::CountCommand(CLI::App& parent) : Command(parent, "count", description) {
    app.footer(footer);
    options.threads = std::max(1U, std::thread::hardware_concurrency());
    app.add_option("TABLE", table, "The table to count; \"-\" or nothing for standard input.")
        ->type_name("")
        ->check(RefuseEmptyName);
    output.Declare(app);
    DeclareColumns();
    DeclareNumbers();
    DeclareEarlierCounts();
    DeclareReading();
    reading.DeclareWithoutAdapting(app);
    app.add_flag("--quiet", quiet, "Show no progress and no notes. Errors are still shown.");
}

void CountCommand::DeclareColumns() {
    app.add_option("--target", options.target,
                   "The column of the categories that the model is to predict. Needed, unless --into is given.")
        ->type_name("COLUMN")
        ->check(RefuseEmptyName);
    const auto addNames = [this](const std::string& option, std::vector<std::string>& target,
                                 const std::string& meaning) {
        const auto take = [option, &target](const std::string& text) { target = ReadNames(option, text); };
        app.add_option_function<std::string>(option, take, meaning)->type_name("COLUMNS");
    };
    addNames("--inputs", inputs,
             "Count these columns only: names with commas between, a name with a comma in quotes. None of them is left "
             "out: what cannot be counted is an error.");
    addNames("--ignore", options.ignored, "Leave these columns out.");
    addNames("--categorical", categorical,
             "Count these columns value by value, texts and numbers alike, and not as identifiers.");
    app.add_option("--sub-models-by", options.subModelsBy,
                   "Make a set of sub-models, one for each value of this column, such as one for each offer. The "
                   "target must have two values; the score is the probability of the second one, in the order of the "
                   "alphabet.")
        ->type_name("COLUMN")
        ->check(RefuseEmptyName);
}

template <typename Number>
void CountCommand::AddNumber(const std::string& option, const std::string& word, double least, double most,
                             bool isWhole, const std::string& wanted, Number& target, const std::string& meaning) {
    const auto take = [=, &target](const std::string& text) {
        const std::optional<double> number = ReadNumber(text);
        if (!number || *number < least || *number > most || (isWhole && *number != std::floor(*number))) {
            throw CLI::ValidationError(option, QuoteArgument(text) + " is no " + wanted);
        }
        target = static_cast<typename Number::value_type>(*number);
    };
    app.add_option_function<std::string>(option, take, meaning)->type_name(word);
}

void CountCommand::DeclareNumbers() {
    AddNumber("--bins", "N", 2, mostBins, true, "whole number from 2 to " + std::to_string(mostBins), bins,
              "Cut numbers into N bins of as nearly as possible the same number of rows; 10 if not given.");
    AddChoice(app, "--bins-by", binning, {{"counts", Binning::EqualCounts}, {"entropy", Binning::Entropy}},
              "Cut numbers into bins of equal counts (counts, the default), or where it tells the target's categories "
              "apart, as often as that is worth its description (entropy).");
    app.add_option_function<std::vector<std::string>>(
           "--cutpoints",
           [this](const std::vector<std::string>& texts) {
               for (const std::string& text : texts)
                   TakeCutpoints(text);
           },
           "Cut a column at these numbers, as in age=18,30,65; a number on a cutpoint belongs to the bin below. May be "
           "given for several columns.")
        ->type_name("COLUMN=NUMBERS")
        ->take_all();
    constexpr double many = 1e15;
    AddNumber("--min-count", "N", 1, many, true, "whole number above 0", minCount,
              "Count texts of fewer than N rows together, as one value, which stands for all values that the table "
              "does not have, too.");
    AddNumber("--threshold", "T", 1e-300, 1e300, false, "number above 0", threshold,
              "The model's threshold, which the smoothed rule adds to each count, and by which the standard's replaces "
              "a share of 0. One over the number of rows if not given.");
}

void CountCommand::TakeCutpoints(const std::string& text) {
    const auto refuse = [&text](const std::string& problem) {
        throw CLI::ValidationError("--cutpoints", QuoteArgument(text) + problem);
    };
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos || sign == 0) refuse(" is no column with its cutpoints, as in age=18,30,65");
    ColumnPlan plan{text.substr(0, sign), ColumnKind::Bins};
    std::string numbers = text.substr(sign + 1);
    std::istringstream stream(numbers);
    for (std::string part; std::getline(stream, part, ',');) {
        const std::optional<double> number = ReadNumber(part);
        if (!number) refuse(": " + QuoteArgument(part) + " is no number");
        if (!plan.cutpoints.empty() && !(plan.cutpoints.back() < *number)) {
            refuse(": the numbers must grow, each one above the one before");
        }
        plan.cutpoints.push_back(*number + 0.0);  // 0 for -0
    }
    if (plan.cutpoints.empty()) refuse(" has no cutpoints");
    cutpoints.push_back(std::move(plan));
}

void CountCommand::DeclareEarlierCounts() {
    app.add_option("--into", earlier,
                   "Add to the counts of DOCUMENT, which nbscore count or merge has written. Target, inputs, cutpoints "
                   "and threshold are those of the document. The output may be the same file.")
        ->type_name("DOCUMENT")
        ->check(RefuseEmptyName);
    AddNumber("--forget", "FACTOR", 0, 1, false, "number from 0 to 1", forget,
              "With --into: multiply the earlier counts with FACTOR first, such as 0.99, so that older cases count "
              "for less and less.");
}

void CountCommand::DeclareReading() {
    const auto takeDelimiter = [this](const std::string& text) {
        const std::optional<char> delimiter = ReadDelimiter(text);
        if (!delimiter) {
            throw CLI::ValidationError("--delimiter", QuoteArgument(text) +
                                                          " is not one ASCII character, or is a quote or a line break; "
                                                          "for a tabulator say tab");
        }
        options.delimiter = *delimiter;
    };
    app.add_option_function<std::string>("--delimiter", takeDelimiter,
                                         "What stands between cells: one ASCII character, or tab. A comma if not "
                                         "given.")
        ->type_name("CHAR");
    const auto addSize = [this](const std::string& option, double least, double most, std::size_t& target,
                                const std::string& meaning) {
        const auto take = [=, &target](const std::string& text) {
            const double number = ReadNumber(text).value_or(0.0);
            if (number < least || number > most || number != std::floor(number)) {
                throw CLI::ValidationError(option, QuoteArgument(text) + " is no whole number from " +
                                                       FormatNumber(least) + " to " + FormatNumber(most));
            }
            target = static_cast<std::size_t>(number);
        };
        app.add_option_function<std::string>(option, take, meaning)->type_name("N");
    };
    addSize("--threads", 1, mostThreads, options.threads,
            "Count on N threads; as many as there are processors if not given. The result is the same for any number.");
    constexpr double fewestCounts = 1024;
    constexpr double mostCounts = 1e9;
    addSize("--counts-per-column", fewestCounts, mostCounts, options.countsOfColumn,
            "Keep up to N counts of each column in memory while the table is read, on each thread: one for each "
            "different value and category. 131072 if not given. Of a column with more, numbers are rounded up to "
            "fewer digits, which is told with the error that this may make in a cutpoint; texts are left out.");
}

void CountCommand::RequireSensibleOptions() const {
    if (earlier.empty()) {
        if (options.target.empty()) throw CLI::RequiredError("--target");
        if (forget) throw CLI::ValidationError("--forget", "it needs --into");
        if (options.subModelsBy == options.target) {
            throw CLI::ValidationError("--sub-models-by", "it is the target");
        }
        return;
    }
    for (const char* const option : {"--target", "--inputs", "--ignore", "--categorical", "--sub-models-by", "--bins",
                                     "--bins-by", "--cutpoints", "--min-count", "--threshold"}) {
        if (app.count(option) > 0) {
            throw CLI::ValidationError(option, "the document of --into says it");
        }
    }
}

/// @param old the counts to add to.
CountOptions CountCommand::MakeOptions(const std::optional<CountedModel>& old) const {
    CountOptions counting = options;
    counting.limits = reading.GetLimits();
    counting.bins = static_cast<std::size_t>(bins.value_or(static_cast<int>(counting.bins)));
    counting.binning = binning.value_or(Binning::EqualCounts);
    if (old) {
        counting.target = old->target;
        counting.subModelsBy = old->subModelField;
        counting.inputs.emplace();
        for (const CountedField& field : old->fields)
            counting.inputs->push_back(GetPlanOf(field));
        return counting;
    }
    if (!inputs.empty()) {
        counting.inputs.emplace();
        for (const std::string& name : inputs)
            counting.inputs->push_back({name});
    }
    for (const std::string& name : categorical)
        counting.known.push_back({name, ColumnKind::Texts});
    counting.known.insert(counting.known.end(), cutpoints.begin(), cutpoints.end());
    return counting;
}

TableTotals CountCommand::Count(const CountOptions& counting, const OpenedOutput& opened, Console& console,
                                std::string& tableName) const {
    CaseInput input(table);
    tableName = input.GetName();
    std::optional<Progress> progress;
    const bool showsProgress = !quiet && console.messagesTerminal != nullptr && !opened.isTerminal;
    if (showsProgress) progress.emplace(*console.messagesTerminal, input.GetSize(), console.now);
    const auto onProgress = [&progress](const ScoringProgress& state) {
        Interrupts::ThrowIfRequested();
        if (progress) progress->Update(state);
    };
    return CountTable(input.GetStream(), tableName, counting, onProgress);
}

ExitStatus CountCommand::Run(Console& console) {
    RequireSensibleOptions();
    const TimeLimit timeLimit(reading.GetMaxTime());
    if (table != "-" && output.GetDestination() != "-" && NameOneFile(output.GetDestination(), table)) {
        throw CLI::ValidationError("--output", QuoteArgument(output.GetDestination()) + " is the table");
    }
    std::optional<CountedModel> old;
    if (!earlier.empty()) old = ReadCountedModel(earlier, reading.GetLimits());
    const OpenedOutput opened = output.Open(console, "");
    const CountOptions counting = MakeOptions(old);
    std::string tableName;
    const TableTotals totals = Count(counting, opened, console, tableName);
    BuiltModel built;
    if (old) {
        built.model = std::move(*old);
        if (forget) built.model.Scale(*forget);
        built.model.Add(BuildModelLike(built.model, totals, tableName));
    } else {
        built = BuildModel(totals, counting, tableName, static_cast<std::uint64_t>(minCount.value_or(0.0)));
        built.model.threshold = threshold;
    }
    opened.sink.Write(WriteVerifiedDocument(built.model, reading));
    Interrupts::ThrowIfRequested();
    opened.Commit();
    Tell(console, tableName, built.notes);
    return ExitStatus::Fine;
}

void CountCommand::Tell(Console& console, const std::string& tableName, const std::vector<std::string>& notes) const {
    if (quiet) return;
    for (const std::string& note : notes)
        console.messages << "note: " << MakePrintable(tableName) << ": " << MakePrintable(note) << '\n';
}

}  // namespace

std::unique_ptr<Command> MakeCountCommand(CLI::App& parent) {
    return std::make_unique<CountCommand>(parent);
}

}  // namespace nbscore
