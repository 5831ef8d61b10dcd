#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "evidence/Evidence.h"
#include "framework/Limits.h"

namespace nbscore {

/// What to do with a text that is no number in a numeric field.
enum class BadValues { Stop, Missing };

/// How the rows of a table are taken.
struct CaseBinderOptions {
    /// With nothing, a model that treats invalid values itself (ModelOutputs) gets such texts; for any other it is
    /// Stop.
    std::optional<BadValues> badValues;
    /// A field that the model needs and the table lacks is absent in every case, instead of an error.
    bool allowMissingFields = false;
};

enum class ScoreFormat { Csv, JsonLines };

/// What scoring adds for a single classifier.
enum class ResultColumns {
    /// The fields that the document's Output asks for, in its order and by its names, where the model knows of such
    /// (ModelOutputs); else the usual ones. Where the prediction alone is wanted, only the field that holds it.
    Output,
    /// The prediction, its confidence, and the probability of each category.
    Usual
};

/// How the scores of a set of sub-models are written; for a single classifier it does nothing.
struct SubModelOptions {
    /// A row for each case and sub-model instead of a column for each sub-model (CSV).
    bool longRows = false;
    /// Only this many of each case's scores, the highest first; with nothing all, in the model's order.
    std::optional<std::size_t> best;
};

/// The reasons that are written beside the answers of a single classifier; for a set of sub-models it does nothing.
struct ReasonOptions {
    /// How many of a case's reasons at most (FindReasons); with 0 none.
    std::size_t most = 0;
    ReasonKind kind = ReasonKind::HeldDown;
};

/// How scored cases are written. What only a table of columns can have does nothing for JSON lines.
struct ScoreWriterOptions {
    ScoreFormat format = ScoreFormat::Csv;
    ResultColumns columns = ResultColumns::Output;
    /// Between the cells of a CSV row.
    char delimiter = ',';
    /// Leave the input's own columns out (CSV; JSON lines never have them).
    bool onlyScores = false;
    /// Only the prediction: no confidence, no probabilities; of sub-models the scores without assessment figures.
    bool predictionOnly = false;
    /// Put in front of the name of every column that scoring adds (CSV; the keys of JSON lines stay as they are).
    std::string prefix;
    SubModelOptions subModels;
    ReasonOptions reasons;
};

/// How a table is read, scored and written.
struct TableScorerOptions {
    /// Between the cells of the table that is read.
    char delimiter = ',';
    /// A table with a header and no case is an error unless this is set.
    bool allowEmpty = false;
    /// How many threads score; with one, only the calling thread works. At least 1.
    std::size_t threads = 1;
    CaseBinderOptions cases;
    /// Only cancelling is used, on each of the threads.
    Limits limits;
    ScoreWriterOptions output;

    /// Whether a row's cells are written as they are read, or not at all.
    bool CopiesRows() const {
        return output.format != ScoreFormat::Csv || output.onlyScores || delimiter == output.delimiter;
    }
};

}  // namespace nbscore
