#include "host/CsvScoreWriter.h"

#include <unordered_set>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "host/Classification.h"
#include "host/HostError.h"
#include "host/MessageText.h"

namespace nbscore {

CsvScoreWriter::CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                               const std::string& sourceName, const ScoreWriterOptions& writerOptions)
    : options(writerOptions), probabilities(target) {
    if (!options.onlyScores) columnNames = header;
    inputColumns = columnNames.size();
    AddColumn("predicted_" + target.GetName());
    if (!options.predictionOnly) {
        AddColumn("confidence");
        for (const std::string& category : probabilities.GetNames()) {
            AddColumn("probability_" + category);
        }
    }
    RequireDistinctNames(sourceName);
}

void CsvScoreWriter::AddColumn(const std::string& name) {
    columnNames.push_back(options.prefix + name);
}

void CsvScoreWriter::RequireDistinctNames(const std::string& sourceName) const {
    std::unordered_set<std::string_view> taken;
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        const bool isNew = taken.insert(columnNames[i]).second;
        if (isNew || i < inputColumns) continue;
        throw CaseDataError(sourceName, 1,
                            "the column " + QuoteForMessage(columnNames[i]) +
                                ", which scoring adds, is in the table already: choose another prefix for the "
                                "added columns (--prefix)");
    }
}

void CsvScoreWriter::AppendHeader(std::string& text) {
    CsvRow row(text, options.delimiter);
    for (const std::string& name : columnNames) {
        row.Add(name);
    }
    row.End();
}

void CsvScoreWriter::AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                                const ScoreResult& result) {
    const ScoreClsResult& classification = RequireClassification(result);
    CsvRow row(text, options.delimiter);
    if (!options.onlyScores) {
        for (const std::string_view cell : cells) {
            row.Add(cell);
        }
    }
    row.Add(classification.GetPrediction()->GetString());
    if (!options.predictionOnly) {
        AddNumber(row, classification.GetConfidence());
        for (const double probability : probabilities.Arrange(classification)) {
            AddNumber(row, probability);
        }
    }
    row.End();
}

/// A system-missing number is an empty cell. Numbers pass through the same rule as texts, because nothing keeps a
/// delimiter from being a character that numbers are written with.
void CsvScoreWriter::AddNumber(CsvRow& row, double number) {
    numberText.clear();
    if (!MCMV::IsMissing(number)) AppendNumber(numberText, number);
    row.Add(numberText);
}

}  // namespace nbscore
