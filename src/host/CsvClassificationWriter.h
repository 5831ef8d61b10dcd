#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/CategoryProbabilities.h"
#include "host/CsvScoreTable.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes classified cases as CSV: the input's columns, then `predicted_<target>`, `confidence` and
/// `probability_<category>` for each target category.
class CsvClassificationWriter : public ScoreWriter {
public:
    /// @param target borrowed.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvClassificationWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                            const std::string& sourceName, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendCase(std::string& text, const std::vector<std::string_view>& cells, const ScoreResult& result) override;

private:
    bool predictionOnly;
    CategoryProbabilities probabilities;
    CsvScoreTable table;
};

}  // namespace nbscore
