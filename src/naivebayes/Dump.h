#pragma once

#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "framework/Export.h"

/// @file
/// How the text dumps of models, encoders and count tables show flags, numbers and lists.

namespace nbscore {

/// Some dumps write a full stop behind a flag and some do not.
inline const char* DumpFlag(bool flag) {
    return flag ? "True" : "False";
}

/// Any NaN prints as "nan", whatever its sign bit happens to be.
inline double DumpNumber(double number) {
    return std::isnan(number) ? std::numeric_limits<double>::quiet_NaN() : number;
}

/// Each entry has one blank behind it, the last one included.
inline void DumpList(std::ostream& out, const std::vector<std::string>& texts) {
    for (const std::string& text : texts)
        out << text << " ";
}

inline void DumpList(std::ostream& out, const std::vector<double>& numbers) {
    for (const double number : numbers)
        out << DumpNumber(number) << " ";
}

}  // namespace nbscore

/// Writes a labelled vector, eight elements to a line, five digits each; "<missing>" for the missing value.
/// The stream's precision is as before afterwards.
NAIVEBAYES_API void PrintVector(std::ostream& out, const std::vector<double>& vector, const std::string& label);
