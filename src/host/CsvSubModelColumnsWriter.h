#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/CsvScoreTable.h"
#include "host/PartedScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes cases scored by a set of sub-models as CSV, a row for each case: the input's columns, then `score_<label>`
/// for each sub-model.
class CsvSubModelColumnsWriter : public PartedScoreWriter {
public:
    /// @param labels one for each sub-model, no two equal.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvSubModelColumnsWriter(const std::vector<std::string>& labels, const std::vector<std::string>& header,
                             const std::string& sourceName, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendInput(std::string& text, const InputRow& input) override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    std::size_t numSubModels;
    CsvScoreTable table;
};

}  // namespace nbscore
