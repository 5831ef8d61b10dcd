#pragma once

#include <vector>

namespace nbscore::bench {

/// How much repeated measurements differ.
struct Spread {
    double least;
    double median;
    double greatest;
};

/// @param values at least one.
Spread SpreadOf(std::vector<double> values);

}  // namespace nbscore::bench
