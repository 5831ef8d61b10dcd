#include "table/CsvScoreWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <variant>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// Nothing keeps a delimiter from being one of these.
constexpr std::string_view charactersOfNumbers = "+-.0123456789aefin";

/// The predictor, its value and its weight.
constexpr std::size_t cellsOfReason = 3;

/// The system-missing number's cell is empty.
char* WriteNumberCell(char* to, double number) {
    return MCMV::IsMissing(number) ? to : WriteNumber(to, number);
}

/// @param numberOf the number of a cell, from 0.
template <typename NumberOf>
void AddNumbers(CsvRow& row, std::size_t count, bool needQuotes, const NumberOf& numberOf) {
    if (!needQuotes) {
        row.AddPlain(count, mostNumberBytes, [&](std::size_t i, char* to) { return WriteNumberCell(to, numberOf(i)); });
        return;
    }
    std::array<char, mostNumberBytes> cell;
    for (std::size_t i = 0; i < count; ++i)
        row.Add({cell.data(), WriteNumberCell(cell.data(), numberOf(i))});
}

/// The cell of a value that there is none of is empty.
void AddOutput(CsvRow& row, const OutputValue& value, bool numbersNeedQuotes) {
    if (const auto* const number = std::get_if<double>(&value)) {
        AddNumbers(row, 1, numbersNeedQuotes, [number](std::size_t) { return *number; });
    } else {
        const auto* const text = std::get_if<std::string>(&value);
        row.Add(text == nullptr ? std::string_view() : *text);
    }
}

/// The confidence and the probabilities. Writing a number takes long, and one of these is the confidence once more.
void AddPosterior(CsvRow& row, double confidence, std::span<const double> probabilities, bool needQuotes) {
    if (needQuotes) {
        AddNumbers(row, 1 + probabilities.size(), true,
                   [&](std::size_t i) { return i == 0 ? confidence : probabilities[i - 1]; });
        return;
    }
    const auto bits = std::bit_cast<std::uint64_t>(confidence);
    const char* written = nullptr;
    std::size_t length = 0;
    row.AddPlain(1 + probabilities.size(), mostNumberBytes, [&](std::size_t i, char* to) {
        if (i == 0) {
            char* const end = WriteNumberCell(to, confidence);
            written = to;
            length = static_cast<std::size_t>(end - to);
            return end;
        }
        if (std::bit_cast<std::uint64_t>(probabilities[i - 1]) != bits)
            return WriteNumberCell(to, probabilities[i - 1]);
        std::memmove(to, written, mostNumberBytes);
        return to + length;
    });
}

}  // namespace

CsvScoreWriter::CsvScoreWriter(const std::vector<std::string>& header, const ScoreWriterOptions& options)
    : delimiter(options.delimiter),
      hasInputColumns(!options.onlyScores && !header.empty()),
      numbersNeedQuotes(charactersOfNumbers.find(delimiter) != std::string_view::npos),
      prefix(options.prefix),
      numReasons(options.reasons.most),
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
    AddColumns(ListAddedColumns(outputs, options), sourceName);
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

void CsvScoreWriter::AddColumns(const std::vector<AddedColumn>& added, const std::string& sourceName) {
    for (const AddedColumn& column : added) {
        columnNames.push_back(prefix + column.name);
        const bool goesOn = !columns.empty() && columns.back().content == column.content &&
                            columns.back().first + columns.back().count == column.number;
        if (goesOn) {
            ++columns.back().count;
        } else {
            columns.push_back({column.content, column.number, 1});
        }
    }
    numAddedColumns = added.size();
    RequireDistinctNames(sourceName);
}

void CsvScoreWriter::RequireDistinctNames(const std::string& sourceName) const {
    const std::size_t inputColumns = columnNames.size() - numAddedColumns;
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
        AppendEnd(text);
        return;
    }
    for (const std::size_t position : ranking.Rank(scored.scores)) {
        AppendInput(text, input);
        AppendRow(text, scored, std::span(&position, 1));
        AppendEnd(text);
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
    const bool isWholeRow = numAddedColumns == 0;
    if (isWholeRow) row.QuoteIfEmpty();
}

void CsvScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    AppendRow(text, scored, ranking.Rank(scored.scores));
}

std::unique_ptr<CsvBatchWriter> CsvScoreWriter::MakeBatchWriter() const {
    if (!hasInputColumns || numbersNeedQuotes || numReasons > 0) return nullptr;
    CsvBatchWriter::AddedColumns added;
    for (const Columns& some : columns) {
        switch (some.content) {
            case AddedColumn::Prediction:
                added.hasPrediction = true;
                break;
            case AddedColumn::Posterior:
                added.hasConfidence = true;
                added.numbers = some.count - 1;
                break;
            case AddedColumn::Score:
                added.numbers = some.count;
                break;
            default:
                return nullptr;
        }
    }
    return std::make_unique<CsvBatchWriter>(delimiter, added);
}

/// There are few predictions, and many cases have the same one.
void CsvScoreWriter::AddPrediction(CsvRow& row, const ScoredCase& scored) {
    if (!scored.predictedCategory) {
        row.Add(scored.prediction == nullptr ? std::string() : scored.prediction->GetString());
        return;
    }
    if (predictionCells.size() <= *scored.predictedCategory) predictionCells.resize(*scored.predictedCategory + 1);
    std::optional<std::string>& cell = predictionCells[*scored.predictedCategory];
    if (!cell) AppendCsvCell(cell.emplace(), scored.prediction->GetString(), delimiter);
    row.AddPlain(*cell);
}

/// There are cells in front of reasons at all times: those of the scores.
void CsvScoreWriter::AppendReasonField(std::string& text, std::size_t, std::string_view predictor) const {
    text += delimiter;
    AppendCsvCell(text, predictor, delimiter);
    text += delimiter;
}

void CsvScoreWriter::AppendReasonValue(std::string& text, std::string_view value) const {
    AppendCsvCell(text, value, delimiter);
}

void CsvScoreWriter::AppendReasonWeight(std::string& text, double weight) const {
    CsvRow row(text, delimiter, true);
    AddNumbers(row, 1, numbersNeedQuotes, [weight](std::size_t) { return weight; });
}

void CsvScoreWriter::EndReasons(std::string& text, std::size_t count) const {
    text.append(cellsOfReason * (numReasons - count), delimiter);
}

/// Appends the added columns' cells, behind those of the input.
/// @param shown the positions of the sub-models that the row shows.
void CsvScoreWriter::AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown) {
    CsvRow row(text, delimiter, hasInputColumns);
    constexpr std::size_t forShortTexts = 32;
    row.Reserve(forShortTexts + numAddedColumns * (mostNumberBytes + 1));
    const auto appendAssessment = [this](std::string& cells, const SubModelAssessment& assessment) {
        CsvRow both(cells, delimiter);
        AddNumbers(both, 2, numbersNeedQuotes,
                   [&](std::size_t i) { return i == 0 ? assessment.mean : assessment.stdDev; });
    };
    for (const Columns& some : columns) {
        const auto addNumbers = [&](const auto& numberOf) {
            AddNumbers(row, some.count, numbersNeedQuotes, [&](std::size_t i) { return numberOf(some.first + i); });
        };
        switch (some.content) {
            case AddedColumn::Prediction:
                AddPrediction(row, scored);
                break;
            case AddedColumn::Posterior:
                AddPosterior(row, scored.confidence, scored.probabilities, numbersNeedQuotes);
                break;
            case AddedColumn::Output:
                for (std::size_t i = 0; i < some.count; ++i)
                    AddOutput(row, scored.outputs[some.first + i], numbersNeedQuotes);
                break;
            case AddedColumn::Label:
                for (std::size_t i = 0; i < some.count; ++i)
                    row.AddPlain(labelCells[shown[some.first + i]]);
                break;
            case AddedColumn::Score:
                addNumbers([&](std::size_t number) { return scored.scores[shown[number]]; });
                break;
            case AddedColumn::Assessment:
                row.AddPlain(assessmentTexts.Get(shown.front(), scored.assessments[shown.front()], appendAssessment));
                break;
            case AddedColumn::Reason:
                // Those stand behind the scores, which may come from memory (BeginReasons).
                break;
        }
    }
    if (!hasInputColumns) row.QuoteIfEmpty();
}

}  // namespace nbscore
