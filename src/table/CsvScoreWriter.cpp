#include "table/CsvScoreWriter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
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
    numInputColumns = columnNames.size();
}

CsvScoreWriter::CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    AddColumn("predicted_" + target.GetName(), Content::Prediction);
    if (!options.predictionOnly) {
        AddColumn("confidence", Content::Confidence);
        const CategoryProbabilities categories(target);
        for (std::size_t i = 0; i < categories.GetNames().size(); ++i)
            AddColumn("probability_" + categories.GetNames()[i], Content::Probability, i);
    }
    AddReasonColumns(options.reasons);
    RequireDistinctNames(sourceName);
}

CsvScoreWriter::CsvScoreWriter(const std::vector<OutputColumn>& outputs, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    for (std::size_t i = 0; i < outputs.size(); ++i)
        AddColumn(outputs[i].name, Content::Output, i);
    AddReasonColumns(options.reasons);
    RequireDistinctNames(sourceName);
}

CsvScoreWriter::CsvScoreWriter(const std::vector<std::string>& names, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& options)
    : CsvScoreWriter(header, options) {
    const std::vector<std::string> labels = LabelSubModels(names);
    for (const std::string& label : labels)
        AppendCsvCell(labelCells.emplace_back(), label, delimiter);
    hasRowForEachSubModel = options.subModels.longRows;
    if (hasRowForEachSubModel) {
        AddColumn("model", Content::Label);
        AddColumn("score", Content::Score);
        if (!options.predictionOnly) {
            AddColumn("assessment_mean", Content::AssessmentMean);
            AddColumn("assessment_std_dev", Content::AssessmentStdDev);
        }
    } else if (options.subModels.best) {
        for (std::size_t i = 0; i < std::min(*options.subModels.best, labels.size()); ++i) {
            const std::string place = "best_" + std::to_string(i + 1);
            AddColumn(place + "_model", Content::Label, i);
            AddColumn(place + "_score", Content::Score, i);
        }
    } else {
        for (std::size_t i = 0; i < labels.size(); ++i)
            AddColumn("score_" + labels[i], Content::Score, i);
    }
    RequireDistinctNames(sourceName);
}

void CsvScoreWriter::AddColumn(const std::string& name, Content content, std::size_t number) {
    columnNames.push_back(prefix + name);
    columns.push_back({content, number});
}

void CsvScoreWriter::AddReasonColumns(const ReasonOptions& reasons) {
    numReasons = reasons.most;
    for (std::size_t i = 0; i < numReasons; ++i) {
        const std::string place = prefix + "reason_" + std::to_string(i + 1);
        for (const char* part : {"_field", "_value", "_weight"})
            columnNames.push_back(place + part);
    }
}

void CsvScoreWriter::RequireDistinctNames(const std::string& sourceName) const {
    SeededSet<std::string_view> taken;
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        const bool isNew = taken.insert(columnNames[i]).second;
        if (isNew || i < numInputColumns) continue;
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
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
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
    const bool isWholeRow = columns.empty();
    if (isWholeRow) row.QuoteIfEmpty();
}

void CsvScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    AppendRow(text, scored, ranking.Rank(scored.subModels));
}

void CsvScoreWriter::AppendReasons(std::string& text, std::span<const WrittenReason> reasons) const {
    CsvRow row(text, delimiter, true);
    for (const auto& [predictor, value, weight] : reasons) {
        row.Add(predictor);
        row.Add(value);
        row.Add(weight);
    }
    text.append(3 * (numReasons - reasons.size()), delimiter);
}

/// Appends the added columns' cells, behind those of the input.
/// @param shown the positions of the sub-models that the row shows.
void CsvScoreWriter::AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown) const {
    CsvRow row(text, delimiter, hasInputColumns);
    std::size_t confidenceBegin = 0;
    std::size_t confidenceLength = 0;
    for (const auto& [content, number] : columns) {
        switch (content) {
            case Content::Prediction:
                row.Add(scored.prediction == nullptr ? std::string() : scored.prediction->GetString());
                break;
            case Content::Confidence:
                confidenceBegin = text.size();
                AddNumber(row, scored.confidence, numbersNeedQuotes);
                confidenceLength = text.size() - confidenceBegin;
                break;
            case Content::Probability:
                // Writing a number takes long, and one of these is the confidence once more.
                if (HaveSameBits(scored.probabilities[number], scored.confidence)) {
                    row.AddAgain(confidenceBegin, confidenceLength);
                } else {
                    AddNumber(row, scored.probabilities[number], numbersNeedQuotes);
                }
                break;
            case Content::Output:
                AddOutput(row, scored.outputs[number], numbersNeedQuotes);
                break;
            case Content::Label:
                row.AddPlain([&label = labelCells[shown[number]]](std::string& cells) { cells += label; });
                break;
            case Content::Score:
                AddNumber(row, scored.subModels[shown[number]].score, numbersNeedQuotes);
                break;
            case Content::AssessmentMean:
                AddNumber(row, scored.subModels[shown[number]].assessmentMean, numbersNeedQuotes);
                break;
            case Content::AssessmentStdDev:
                AddNumber(row, scored.subModels[shown[number]].assessmentStdDev, numbersNeedQuotes);
                break;
        }
    }
    if (!hasInputColumns) row.QuoteIfEmpty();
}

}  // namespace nbscore
