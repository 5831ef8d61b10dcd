#pragma once

#include <string>

namespace nbscore {

enum class ScoreFormat { Csv, JsonLines };

/// How scored cases are written. What only a table of columns can have does nothing for JSON lines.
struct ScoreWriterOptions {
    ScoreFormat format = ScoreFormat::Csv;
    /// Between the cells of a CSV row.
    char delimiter = ',';
    /// Leave the input's own columns out (CSV; JSON lines never have them).
    bool onlyScores = false;
    /// Only the prediction: no confidence, no probabilities.
    bool predictionOnly = false;
    /// Put in front of the name of every column that scoring adds (CSV; the keys of JSON lines are fixed).
    std::string prefix;
};

}  // namespace nbscore
