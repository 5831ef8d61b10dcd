// Bytes as a table of cases for the bundled examples. The first line chooses how the table is scored; the rest is the
// table. What is not refused gives a row for each case, with the case's own cells, and the same however slowly it
// comes.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/RunFindings.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "support/DribblingBuffer.h"
#include "support/TextSink.h"
#include "table/CsvReader.h"
#include "table/TableScorer.h"

namespace nbscore::fuzz {
namespace {

using test::TextSink;
using Table = std::vector<std::vector<std::string>>;

constexpr std::size_t modelOfOffers = 2;
/// By the standard's rule, with densities, treatments and an Output.
constexpr std::size_t modelOfMails = 3;
constexpr std::size_t numOffers = 4;

/// How a table is scored, read from the line in front of it: a letter for each choice that differs from the usual, as
/// the switch below lists them. Other letters are ignored.
struct TableChoices {
    explicit TableChoices(std::string_view line);

    /// Which of the examples.
    std::size_t model = 0;
    TableScorerOptions options;
    /// How many bytes are ready at a time when the table comes slowly.
    std::size_t bytesAtATime = 1;

    /// How many rows a case has in a result that is a table.
    std::size_t CountRowsPerCase() const;

private:
    void Take(char letter);
};

TableChoices::TableChoices(std::string_view line) {
    // The character after a d is the delimiter.
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == 'd' && at + 1 < line.size()) {
            options.delimiter = options.output.delimiter = ReadDelimiter(line.substr(++at, 1)).value_or(',');
        } else {
            Take(line[at]);
        }
    }
}

void TableChoices::Take(char letter) {
    ScoreWriterOptions& output = options.output;
    switch (letter) {
        case 'i':
            model = 1;
            break;
        case 'o':
            model = modelOfOffers;
            break;
        case 'n':
            model = modelOfMails;
            break;
        case 'u':
            output.columns = ResultColumns::Usual;
            break;
        case 'm':
            options.cases.badValues = BadValues::Missing;
            break;
        case 'a':
            options.cases.allowMissingFields = true;
            break;
        case 'e':
            options.allowEmpty = true;
            break;
        case 'j':
            output.format = ScoreFormat::JsonLines;
            break;
        case 's':
            output.onlyScores = true;
            break;
        case 'p':
            output.predictionOnly = true;
            break;
        case 'x':
            output.prefix = "\"a,b;\n ";
            break;
        case 'l':
            output.subModels.longRows = true;
            break;
        case 'b':
            output.subModels.best = output.subModels.best.value_or(0) + 1;
            break;
        case 'r':
            ++output.reasons.most;
            break;
        case 'v':
            output.reasons.kind = ReasonKind::Lifted;
            break;
        case 'w':
            bytesAtATime *= 7;
            break;
        default:
            break;
    }
}

std::size_t TableChoices::CountRowsPerCase() const {
    const SubModelOptions& subModels = options.output.subModels;
    if (model != modelOfOffers || !subModels.longRows) return 1;
    return std::min(subModels.best.value_or(numOffers), numOffers);
}

LoadedModel& Example(std::size_t number) {
    static const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    static std::array models = {
        LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/titanic/titanic.pmml"),
        LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/iris/iris.pmml"),
        LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/offers/offers.pmml"),
        LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/mail/mail_with_length.pmml", ScoringRule::Standard)};
    return models[number % models.size()];
}

/// What scoring gave: the result, or why the table was refused.
struct Outcome {
    std::string result;
    std::string refusal;
    std::uint64_t rows = 0;
    /// What is told of values and rows.
    std::string findings;
};

Outcome Score(const TableChoices& choices, std::istream& table) {
    Outcome outcome;
    try {
        TextSink sink;
        const ScoringSummary summary = ScoreTable(Example(choices.model).Get(), table, "table", sink, choices.options,
                                                  [](const ScoringProgress&) {});
        outcome.result = sink.text;
        outcome.rows = summary.rows;
        outcome.findings = WriteSummaryAsJson(summary, "model", "table");
        for (const std::string& finding : TellFindings(summary, "table"))
            outcome.findings += finding + '\n';
    } catch (const CaseDataError& error) {
        outcome.refusal = error.what();
    }
    return outcome;
}

Table ReadTable(const std::string& text, char delimiter) {
    std::istringstream stream(text);
    CsvReader reader(stream, "result", delimiter);
    std::vector<std::string_view> cells;
    Table table;
    while (reader.ReadRow(cells))
        table.emplace_back(cells.begin(), cells.end());
    return table;
}

bool BeginsWith(const std::vector<std::string>& row, const std::vector<std::string>& front) {
    return row.size() > front.size() && std::equal(front.begin(), front.end(), row.begin());
}

/// @param rowsPerCase how many rows a case has in the result.
void RequireSameCases(const Table& input, const Table& result, std::size_t rowsPerCase) {
    Require(BeginsWith(result.front(), input.front()), "the result begins with the input's columns");
    for (std::size_t row = 1; row < result.size(); ++row) {
        Require(BeginsWith(result[row], input[1 + (row - 1) / rowsPerCase]), "a row begins with its case's cells");
    }
}

void RequireWholeTable(const TableChoices& choices, const std::string& text, const Outcome& outcome) {
    const Table input = ReadTable(text, choices.options.delimiter);
    const Table result = ReadTable(outcome.result, choices.options.delimiter);
    const std::size_t rowsPerCase = choices.CountRowsPerCase();
    Require(input.size() == outcome.rows + 1, "every row of the table was scored");
    Require(result.size() == outcome.rows * rowsPerCase + 1, "every case has its rows in the result");
    for (const std::vector<std::string>& row : result)
        Require(row.size() == result.front().size(), "all rows of the result have the same number of cells");
    if (!choices.options.output.onlyScores) RequireSameCases(input, result, rowsPerCase);
}

void TryTable(const TableChoices& choices, const std::string& text) {
    std::istringstream stream(text);
    const Outcome outcome = Score(choices, stream);
    if (!outcome.refusal.empty()) {
        Require(outcome.refusal.starts_with("table"), "a refusal names the table");
    } else if (choices.options.output.format == ScoreFormat::JsonLines) {
        const auto lines = std::count(outcome.result.begin(), outcome.result.end(), '\n');
        Require(static_cast<std::uint64_t>(lines) == outcome.rows, "every case has a line in the result");
    } else {
        RequireWholeTable(choices, text, outcome);
    }

    test::DribblingBuffer dribbling(text, choices.bytesAtATime);
    std::istream slow(&dribbling);
    const Outcome again = Score(choices, slow);
    Require(outcome.result == again.result && outcome.refusal == again.refusal && outcome.findings == again.findings,
            "a table gives the same, and the same is told of it, however slowly it comes");
}

}  // namespace
}  // namespace nbscore::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos) return -1;
    const nbscore::fuzz::TableChoices choices(text.substr(0, lineEnd));
    nbscore::fuzz::TryTable(choices, std::string(text.substr(lineEnd + 1)));
    return 0;
}
