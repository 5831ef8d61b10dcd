#include "host/CsvSubModelColumnsWriter.h"

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

void CsvSubModelColumnsWriter::AppendInput(std::string& text, const InputRow& input) {
    table.AppendInput(text, input);
}

void CsvSubModelColumnsWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    CsvRow row = table.BeginScores(text);
    for (const SubModelScore& subModel : scored.subModels) {
        table.AddNumber(row, subModel.score);
    }
    row.End();
}

}  // namespace nbscore
