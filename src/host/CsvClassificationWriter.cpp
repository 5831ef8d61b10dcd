#include "host/CsvClassificationWriter.h"

#include "host/Classification.h"

namespace nbscore {

CsvClassificationWriter::CsvClassificationWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                                                 const std::string& sourceName, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), probabilities(target), table(header, options) {
    table.AddColumn("predicted_" + target.GetName());
    if (!predictionOnly) {
        table.AddColumn("confidence");
        for (const std::string& category : probabilities.GetNames()) {
            table.AddColumn("probability_" + category);
        }
    }
    table.RequireDistinctNames(sourceName);
}

void CsvClassificationWriter::AppendHeader(std::string& text) {
    table.AppendHeader(text);
}

void CsvClassificationWriter::AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                                         const ScoreResult& result) {
    const ScoreClsResult& classification = RequireClassification(result);
    CsvRow row = table.BeginRow(text, cells);
    row.Add(classification.GetPrediction()->GetString());
    if (!predictionOnly) {
        table.AddNumber(row, classification.GetConfidence());
        for (const double probability : probabilities.Arrange(classification)) {
            table.AddNumber(row, probability);
        }
    }
    row.End();
}

}  // namespace nbscore
