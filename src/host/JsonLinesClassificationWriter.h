#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/CategoryProbabilities.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes classified cases as JSON, one object a line:
/// `{"prediction": …, "confidence": …, "probabilities": {"<category>": …}}`, categories in the target's order.
/// The prediction of a numeric target is a number.
class JsonLinesClassificationWriter : public ScoreWriter {
public:
    /// @param target borrowed.
    JsonLinesClassificationWriter(const ScoreDictVar& target, const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendCase(std::string& text, const std::vector<std::string_view>& cells, const ScoreResult& result) override;

private:
    void AppendPrediction(std::string& text, const ScoreValue& prediction) const;

    bool predictionOnly;
    bool numericTarget;
    CategoryProbabilities probabilities;
    std::vector<std::string> categoryKeys;  // with what stands before and behind each one, `, "yes": `
};

}  // namespace nbscore
