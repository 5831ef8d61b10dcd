#include "host/CsvSubModelRowsWriter.h"

#include "host/SubModelScores.h"

namespace nbscore {

CsvSubModelRowsWriter::CsvSubModelRowsWriter(const std::vector<std::string>& labels,
                                             const std::vector<std::string>& header, const std::string& sourceName,
                                             const ScoreWriterOptions& options)
    : subModelLabels(labels),
      predictionOnly(options.predictionOnly),
      ranking(options.subModels.best),
      table(header, options) {
    table.AddColumn("model");
    table.AddColumn("score");
    if (!predictionOnly) {
        table.AddColumn("assessment_mean");
        table.AddColumn("assessment_std_dev");
    }
    table.RequireDistinctNames(sourceName);
}

void CsvSubModelRowsWriter::AppendHeader(std::string& text) {
    table.AppendHeader(text);
}

void CsvSubModelRowsWriter::AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                                       const ScoreResult& result) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result, subModelLabels.size());
    for (const std::size_t position : ranking.Rank(scores)) {
        CsvRow row = table.BeginRow(text, cells);
        row.Add(subModelLabels[position]);
        table.AddNumber(row, scores[position].score);
        if (!predictionOnly) {
            table.AddNumber(row, scores[position].assessmentMean);
            table.AddNumber(row, scores[position].assessmentStdDev);
        }
        row.End();
    }
}

}  // namespace nbscore
