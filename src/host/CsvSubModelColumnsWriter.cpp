#include "host/CsvSubModelColumnsWriter.h"

#include "host/SubModelScores.h"

namespace nbscore {

CsvSubModelColumnsWriter::CsvSubModelColumnsWriter(const std::vector<std::string>& labels,
                                                   const std::vector<std::string>& header,
                                                   const std::string& sourceName, const ScoreWriterOptions& options)
    : numSubModels(labels.size()), table(header, options) {
    for (const std::string& label : labels) {
        table.AddColumn("score_" + label);
    }
    table.RequireDistinctNames(sourceName);
}

void CsvSubModelColumnsWriter::AppendHeader(std::string& text) {
    table.AppendHeader(text);
}

void CsvSubModelColumnsWriter::AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                                          const ScoreResult& result) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result, numSubModels);
    CsvRow row = table.BeginRow(text, cells);
    for (const SubModelScore& subModel : scores) {
        table.AddNumber(row, subModel.score);
    }
    row.End();
}

}  // namespace nbscore
