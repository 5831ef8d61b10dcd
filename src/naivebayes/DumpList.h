#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "naivebayes/DumpNumber.h"

namespace nbscore {

/// Writes each entry with one blank behind it, the last one included: the form that lists have in the text
/// dumps.
inline void DumpList(std::ostream& out, const std::vector<std::string>& texts) {
    for (const std::string& text : texts)
        out << text << " ";
}

inline void DumpList(std::ostream& out, const std::vector<double>& numbers) {
    for (const double number : numbers)
        out << DumpNumber(number) << " ";
}

}  // namespace nbscore
