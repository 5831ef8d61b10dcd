#pragma once

#include <functional>

#include "host/BlockScores.h"
#include "host/CsvRowReader.h"

namespace nbscore {

/// Scores the rows of a block of a table. Each thread has one of its own.
class BlockScorer {
public:
    virtual ~BlockScorer() = default;

    /// Called with scores whose text has grown long, to take the text away.
    using OnLongText = std::function<void(BlockScores&)>;
    /// How long a text may grow before it is taken away.
    static constexpr std::size_t longText = std::size_t{1} << 20;

    /// Scores all rows that the reader has, in order, and appends them. Throws CaseDataError for a row that cannot be
    /// read or scored, and UnscorableModelError and InputOutputError for what goes wrong with a model.
    virtual void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) = 0;
};

}  // namespace nbscore
