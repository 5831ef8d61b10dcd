#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/CsvScoreTable.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes cases scored by a set of sub-models as CSV, a row for each case: the input's columns, then `score_<label>`
/// for each sub-model.
class CsvSubModelColumnsWriter : public ScoreWriter {
public:
    /// @param labels one for each sub-model, no two equal.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvSubModelColumnsWriter(const std::vector<std::string>& labels, const std::vector<std::string>& header,
                             const std::string& sourceName, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendCase(std::string& text, const std::vector<std::string_view>& cells, const ScoreResult& result) override;

private:
    std::size_t numSubModels;
    CsvScoreTable table;
};

}  // namespace nbscore
