#pragma once

#include <string_view>

/// @file
/// The names of the extensions of PMML that are read.

namespace nbscore::assessment {

/// Of the extensions that carry a sub-model's assessment figures.
inline constexpr std::string_view meanPerformance = "meanPerformance";
inline constexpr std::string_view stdDevPerformance = "stdDevPerformance";
inline constexpr std::string_view trainingSampleSize = "trainingSampleSize";

}  // namespace nbscore::assessment

namespace nbscore::vendor_extension {

/// Of the one extension of a mining schema, which lists derived fields as inputs: who may declare them, and its name.
inline constexpr std::string_view extender = "scoring.nbscore";
inline constexpr std::string_view derivedFields = "DerivedFields";

}  // namespace nbscore::vendor_extension
