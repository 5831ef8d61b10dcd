#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace nbscore {

enum class ScoreFormat { Csv, JsonLines };

/// How the scores of a set of sub-models are written; for a single classifier it does nothing.
struct SubModelOptions {
    /// A row for each case and sub-model instead of a column for each sub-model (CSV).
    bool longRows = false;
    /// Only this many of each case's scores, the highest first; with nothing all, in the model's order.
    std::optional<std::size_t> best;
};

/// How scored cases are written. What only a table of columns can have does nothing for JSON lines.
struct ScoreWriterOptions {
    ScoreFormat format = ScoreFormat::Csv;
    /// Between the cells of a CSV row.
    char delimiter = ',';
    /// Leave the input's own columns out (CSV; JSON lines never have them).
    bool onlyScores = false;
    /// Only the prediction: no confidence, no probabilities; of sub-models the scores without assessment figures.
    bool predictionOnly = false;
    /// Put in front of the name of every column that scoring adds (CSV; the keys of JSON lines are fixed).
    std::string prefix;
    SubModelOptions subModels;
};

}  // namespace nbscore
