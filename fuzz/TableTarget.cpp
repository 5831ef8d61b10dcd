// Bytes as a table of cases for the bundled examples. The first line chooses how the table is scored; the rest is the
// table. What is not refused gives a row for each case, with the case's own cells, and the same however slowly it
// comes.

#include <array>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "TableChoices.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "support/DribblingBuffer.h"
#include "table/CsvReader.h"
#include "table/TableScorer.h"

namespace nbscore::fuzz {
namespace {

using Table = std::vector<std::vector<std::string>>;

class TextSink : public OutputSink {
public:
    void Write(std::string_view bytes) override { text += bytes; }
    void Commit() override {}

    std::string text;
};

LoadedModel& Example(std::size_t number) {
    static const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    static std::array models = {LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/titanic/titanic.pmml"),
                                LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/iris/iris.pmml"),
                                LoadedModel::Read(plugin, NBSCORE_EXAMPLES "/offers/offers.pmml")};
    return models[number % models.size()];
}

/// What scoring gave: the result, or why the table was refused.
struct Outcome {
    std::string result;
    std::string refusal;
    std::uint64_t rows = 0;
};

Outcome Score(const TableChoices& choices, std::istream& table) {
    Outcome outcome;
    try {
        TextSink sink;
        const ScoringSummary summary = ScoreTable(Example(choices.model).Get(), table, "table", sink, choices.options,
                                                  [](const ScoringProgress&) {});
        outcome.result = sink.text;
        outcome.rows = summary.rows;
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
    Require(outcome.result == again.result && outcome.refusal == again.refusal,
            "a table gives the same however slowly it comes");
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
