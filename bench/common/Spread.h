#pragma once

#include <vector>

namespace nbscore::bench {

/// How far repeated measurements lie apart.
struct Spread {
    double least;
    double median;
    double greatest;
};

/// @param values at least one.
Spread SpreadOf(std::vector<double> values);

}  // namespace nbscore::bench
