#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "host/SubModelScores.h"

namespace nbscore {

/// Which sub-models of a case to show, and in which order.
class SubModelRanking {
public:
    /// @param best how many of the highest scores to keep; with nothing all are shown, in the model's order.
    explicit SubModelRanking(std::optional<std::size_t> best) : limit(best) {}

    /// The positions of the sub-models to show, valid until the next call. The highest score comes first, equal ones in
    /// the model's order; a score that is no number is lower than any other.
    const std::vector<std::size_t>& Rank(std::span<const SubModelScore> scores);

private:
    std::optional<std::size_t> limit;
    std::vector<std::size_t> positions;
};

}  // namespace nbscore
