#include "host/CsvBestSubModelsWriter.h"

#include <algorithm>

#include "host/SubModelScores.h"

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

void CsvBestSubModelsWriter::AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                                        const ScoreResult& result) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result, subModelLabels.size());
    CsvRow row = table.BeginRow(text, cells);
    for (const std::size_t position : ranking.Rank(scores)) {
        row.Add(subModelLabels[position]);
        table.AddNumber(row, scores[position].score);
    }
    row.End();
}

}  // namespace nbscore
