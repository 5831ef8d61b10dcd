#include "host/CsvBestSubModelsWriter.h"

#include <algorithm>

namespace nbscore {

CsvBestSubModelsWriter::CsvBestSubModelsWriter(const std::vector<std::string>& labels,
                                               const std::vector<std::string>& header, const std::string& sourceName,
                                               const ScoreWriterOptions& options, std::size_t best)
    : subModelLabels(labels), ranking(best), table(header, options) {
    for (std::size_t place = 1; place <= std::min(best, labels.size()); ++place) {
        const std::string prefix = "best_" + std::to_string(place);
        table.AddColumn(prefix + "_model");
        table.AddColumn(prefix + "_score");
    }
    table.RequireDistinctNames(sourceName);
}

void CsvBestSubModelsWriter::AppendHeader(std::string& text) {
    table.AppendHeader(text);
}

void CsvBestSubModelsWriter::AppendInput(std::string& text, const InputRow& input) {
    table.AppendInput(text, input);
}

void CsvBestSubModelsWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    CsvRow row = table.BeginScores(text);
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
        row.Add(subModelLabels[position]);
        table.AddNumber(row, scored.subModels[position].score);
    }
    row.End();
}

}  // namespace nbscore
