#pragma once

#include <string>
#include <vector>

#include "host/CsvScoreTable.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"
#include "host/SubModelRanking.h"

namespace nbscore {

/// Writes cases scored by a set of sub-models as CSV, a row for each case and sub-model: the input's columns, then
/// `model` (the label), `score`, `assessment_mean` and `assessment_std_dev`. A case without sub-models has no row.
class CsvSubModelRowsWriter : public ScoreWriter {
public:
    /// @param labels one for each sub-model, no two equal.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvSubModelRowsWriter(const std::vector<std::string>& labels, const std::vector<std::string>& header,
                          const std::string& sourceName, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) override;

private:
    std::vector<std::string> subModelLabels;
    bool predictionOnly;
    SubModelRanking ranking;
    CsvScoreTable table;
};

}  // namespace nbscore
