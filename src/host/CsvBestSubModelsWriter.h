#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/CsvScoreTable.h"
#include "host/PartedScoreWriter.h"
#include "host/ScoreWriterOptions.h"
#include "host/SubModelRanking.h"

namespace nbscore {

/// Writes the highest scores of a set of sub-models as CSV, a row for each case: the input's columns, then
/// `best_1_model`, `best_1_score`, `best_2_model` and so on, the highest score first.
class CsvBestSubModelsWriter : public PartedScoreWriter {
public:
    /// @param labels one for each sub-model, no two equal.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    /// @param best how many scores to keep, of as many as there are.
    CsvBestSubModelsWriter(const std::vector<std::string>& labels, const std::vector<std::string>& header,
                           const std::string& sourceName, const ScoreWriterOptions& options, std::size_t best);

    void AppendHeader(std::string& text) override;
    void AppendInput(std::string& text, const InputRow& input) override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    std::vector<std::string> subModelLabels;
    SubModelRanking ranking;
    CsvScoreTable table;
};

}  // namespace nbscore
