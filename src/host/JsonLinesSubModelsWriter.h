#pragma once

#include <string>
#include <vector>

#include "host/PartedScoreWriter.h"
#include "host/ScoreWriterOptions.h"
#include "host/SubModelRanking.h"

namespace nbscore {

/// Writes cases scored by a set of sub-models as one JSON object a line:
/// `{"models": [{"name": …, "score": …, "assessment_mean": …, "assessment_std_dev": …}]}`. Names stand as the document
/// has them. A figure that was never set is null.
class JsonLinesSubModelsWriter : public PartedScoreWriter {
public:
    JsonLinesSubModelsWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendInput(std::string& text, const InputRow& input) override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    bool predictionOnly;
    SubModelRanking ranking;
    std::vector<std::string> openings;  // one for each sub-model, up to its score: `{"name": "a", "score": `
};

}  // namespace nbscore
