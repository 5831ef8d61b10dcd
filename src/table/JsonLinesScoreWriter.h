#pragma once

#include <memory>
#include <string>
#include <vector>

#include "table/ScoreWriter.h"

namespace nbscore {

/// Writes scored cases as JSON, one object a line. A number that was never set, or that JSON cannot hold, is null.
class JsonLinesScoreWriter : public ScoreWriter {
public:
    /// For a single classifier: `{"prediction": …, "confidence": …, "probabilities": {"<category>": …}}`, categories in
    /// the target's order. The prediction of a numeric target is a number.
    JsonLinesScoreWriter(const ScoreDictVar& target, const ScoreWriterOptions& options);

    /// For a set of sub-models:
    /// `{"models": [{"name": …, "score": …, "assessment_mean": …, "assessment_std_dev": …}]}`. Names stand as the
    /// document has them.
    JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options);

    std::unique_ptr<ScoreWriter> Copy() const override { return std::make_unique<JsonLinesScoreWriter>(*this); }
    void AppendHeader(std::string&) const override {}
    void AppendCase(std::string& text, const InputRow&, const ScoredCase& scored) override {
        AppendScores(text, scored);
    }
    bool HasScoresBehindInput() const override { return true; }
    void AppendInput(std::string&, const InputRow&) const override {}
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    void AppendClassification(std::string& text, const ScoredCase& scored) const;
    void AppendPrediction(std::string& text, const ScoreValue& prediction) const;
    void AppendSubModels(std::string& text, const ScoredCase& scored);

    bool predictionOnly;
    bool numericTarget = false;
    /// What stands in front of the number of each category, `, "yes": `, or of each sub-model's score,
    /// `{"name": "a", "score": `.
    std::vector<std::string> openings;
    SubModelRanking ranking;
};

}  // namespace nbscore
