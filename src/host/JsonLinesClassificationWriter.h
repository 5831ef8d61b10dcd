#pragma once

#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/PartedScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes classified cases as JSON, one object a line:
/// `{"prediction": …, "confidence": …, "probabilities": {"<category>": …}}`, categories in the target's order.
/// The prediction of a numeric target is a number.
class JsonLinesClassificationWriter : public PartedScoreWriter {
public:
    /// @param target borrowed.
    JsonLinesClassificationWriter(const ScoreDictVar& target, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendInput(std::string& text, const InputRow& input) override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    void AppendPrediction(std::string& text, const ScoreValue& prediction) const;

    bool predictionOnly;
    bool numericTarget;
    std::vector<std::string> categoryKeys;  // with what stands before and behind each one, `, "yes": `
};

}  // namespace nbscore
