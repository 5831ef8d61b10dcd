#pragma once

#include <cmath>
#include <limits>

namespace nbscore {

/// A number as the text dumps show it: any NaN prints as "nan", whatever its sign bit happens to be.
inline double DumpNumber(double number) {
    return std::isnan(number) ? std::numeric_limits<double>::quiet_NaN() : number;
}

}  // namespace nbscore
