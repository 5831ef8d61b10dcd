#include "table/CsvScoreWriter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>
#include <variant>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "table/CsvText.h"

namespace nbscore {
namespace {

/// Nothing keeps a delimiter from being one of these.
constexpr std::string_view charactersOfNumbers = "+-.0123456789aefin";

/// The system-missing number's cell is empty.
void AddNumber(CsvRow& row, double number, bool needsQuotes) {
    if (needsQuotes) {
        row.Add(MCMV::IsMissing(number) ? std::string() : FormatNumber(number));
        return;
    }
    row.AddPlain([number](std::string& text) {
        if (!MCMV::IsMissing(number)) AppendNumber(text, number);
    });
}

/// The cell of a value that there is none of is empty.
void AddOutput(CsvRow& row, const OutputValue& value, bool numbersNeedQuotes) {
    if (const auto* const number = std::get_if<double>(&value)) {
        AddNumber(row, *number, numbersNeedQuotes);
    } else {
        const auto* const text = std::get_if<std::string>(&value);
        row.Add(text == nullptr ? std::string_view() : *text);
    }
}

bool HaveSameBits(double one, double other) {
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

}  // namespace

CsvScoreWriter::CsvScoreWriter(const std::vector<std::string>& header, const ScoreWriterOptions& options)
    : delimiter(options.delimiter),
      hasInputColumns(!options.onlyScores && !header.empty()),
      numbersNeedQuotes(charactersOfNumbers.find(delimiter) != std::string_view::npos),
      prefix(options.prefix),
      ranking(options.subModels.best) {
    if (hasInputColumns) columnNames = header;
}

CsvScoreWriter::CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    AddColumns(ListAddedColumns(target, options), sourceName);
}

CsvScoreWriter::CsvScoreWriter(const std::vector<OutputColumn>& outputs, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    AddColumns(ListAddedColumns(outputs), sourceName);
}

CsvScoreWriter::CsvScoreWriter(const std::vector<std::string>& names, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    const std::vector<std::string> labels = LabelSubModels(names);
    for (const std::string& label : labels)
        AppendCsvCell(labelCells.emplace_back(), label, delimiter);
    hasRowForEachSubModel = options.subModels.longRows;
    AddColumns(ListAddedColumns(labels, options), sourceName);
}

void CsvScoreWriter::AddColumns(std::vector<AddedColumn> added, const std::string& sourceName) {
    columns = std::move(added);
    for (const AddedColumn& column : columns)
        columnNames.push_back(prefix + column.name);
    RequireDistinctNames(sourceName);
}

void CsvScoreWriter::RequireDistinctNames(const std::string& sourceName) const {
    const std::size_t inputColumns = columnNames.size() - columns.size();
    SeededSet<std::string_view> taken;
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        const bool isNew = taken.insert(columnNames[i]).second;
        if (isNew || i < inputColumns) continue;
        throw CaseDataError(sourceName, 1,
                            "the column " + QuoteForMessage(columnNames[i]) +
                                ", which scoring adds, is in the table already: choose another prefix for the "
                                "added columns (--prefix)");
    }
}

void CsvScoreWriter::AppendHeader(std::string& text) const {
    CsvRow row(text, delimiter);
    for (const std::string& name : columnNames)
        row.Add(name);
    row.End();
}

void CsvScoreWriter::AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) {
    if (!hasRowForEachSubModel) {
        AppendInput(text, input);
        AppendScores(text, scored);
        return;
    }
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
        AppendInput(text, input);
        AppendRow(text, scored, std::span(&position, 1));
    }
}

void CsvScoreWriter::AppendInput(std::string& text, const InputRow& input) const {
    if (!hasInputColumns) return;
    if (!input.asWritten.empty()) {
        text += input.asWritten;
        return;
    }
    CsvRow row(text, delimiter);
    for (const std::string_view cell : input.cells)
        row.Add(cell);
    const bool isWholeRow = columns.empty();
    if (isWholeRow) row.QuoteIfEmpty();
}

void CsvScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    AppendRow(text, scored, ranking.Rank(scored.subModels));
}

/// Appends the added columns' cells, behind those of the input, and ends the row.
/// @param shown the positions of the sub-models that the row shows.
void CsvScoreWriter::AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown) const {
    CsvRow row(text, delimiter, hasInputColumns);
    std::size_t confidenceBegin = 0;
    std::size_t confidenceLength = 0;
    for (const AddedColumn& column : columns) {
        const std::size_t number = column.number;
        switch (column.content) {
            case AddedColumn::Prediction:
                row.Add(scored.prediction == nullptr ? std::string() : scored.prediction->GetString());
                break;
            case AddedColumn::Confidence:
                confidenceBegin = text.size();
                AddNumber(row, scored.confidence, numbersNeedQuotes);
                confidenceLength = text.size() - confidenceBegin;
                break;
            case AddedColumn::Probability:
                // Writing a number takes long, and one of these is the confidence once more.
                if (HaveSameBits(scored.probabilities[number], scored.confidence)) {
                    row.AddAgain(confidenceBegin, confidenceLength);
                } else {
                    AddNumber(row, scored.probabilities[number], numbersNeedQuotes);
                }
                break;
            case AddedColumn::Output:
                AddOutput(row, scored.outputs[number], numbersNeedQuotes);
                break;
            case AddedColumn::Label:
                row.AddPlain([&label = labelCells[shown[number]]](std::string& cells) { cells += label; });
                break;
            case AddedColumn::Score:
                AddNumber(row, scored.subModels[shown[number]].score, numbersNeedQuotes);
                break;
            case AddedColumn::AssessmentMean:
                AddNumber(row, scored.subModels[shown[number]].assessmentMean, numbersNeedQuotes);
                break;
            case AddedColumn::AssessmentStdDev:
                AddNumber(row, scored.subModels[shown[number]].assessmentStdDev, numbersNeedQuotes);
                break;
        }
    }
    row.End();
}

}  // namespace nbscore
