#pragma once

#include <cstddef>

namespace nbscore {

/// How many more elementary steps an evaluation may take: no text and no table holds up a case for longer.
class WorkBudget {
public:
    explicit WorkBudget(double steps) : left(steps) {}

    /// False when that is more than is left; nothing is left from then on.
    bool Spend(double steps) {
        left -= steps;
        return left >= 0;
    }
    bool Spend(std::size_t steps) { return Spend(static_cast<double>(steps)); }

private:
    double left;
};

}  // namespace nbscore
