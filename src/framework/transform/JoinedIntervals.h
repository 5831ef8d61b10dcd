#pragma once

#include <vector>

#include "framework/ValueInterval.h"

namespace nbscore {

/// Some intervals, joined where they meet, so that whether a number lies in one of them takes no look at all of them.
class JoinedIntervals {
public:
    JoinedIntervals() = default;
    explicit JoinedIntervals(std::vector<ValueInterval> intervals);

    bool Contain(double number) const;

private:
    /// From left to right; no two meet, and none is empty.
    std::vector<ValueInterval> joined;
};

}  // namespace nbscore
