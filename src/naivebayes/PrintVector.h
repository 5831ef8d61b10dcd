#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "framework/Export.h"

/// Writes a labelled vector, eight elements to a line, five digits each; "<missing>" for the missing value.
/// The stream's precision is as before afterwards.
NAIVEBAYES_API void PrintVector(std::ostream& out, const std::vector<double>& vector, const std::string& label);
