#include "host/CsvSubModelRowsWriter.h"

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

void CsvSubModelRowsWriter::AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) {
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
        table.AppendInput(text, input);
        CsvRow row = table.BeginScores(text);
        row.Add(subModelLabels[position]);
        table.AddNumber(row, scored.subModels[position].score);
        if (!predictionOnly) {
            table.AddNumber(row, scored.subModels[position].assessmentMean);
            table.AddNumber(row, scored.subModels[position].assessmentStdDev);
        }
        row.End();
    }
}

}  // namespace nbscore
