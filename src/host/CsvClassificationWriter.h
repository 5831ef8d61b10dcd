#pragma once

#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/CsvScoreTable.h"
#include "host/PartedScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes classified cases as CSV: the input's columns, then `predicted_<target>`, `confidence` and
/// `probability_<category>` for each target category.
class CsvClassificationWriter : public PartedScoreWriter {
public:
    /// @param target borrowed.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvClassificationWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                            const std::string& sourceName, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendInput(std::string& text, const InputRow& input) override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    bool predictionOnly;
    CsvScoreTable table;
};

}  // namespace nbscore
