#pragma once

#include <xercesc/util/XMLString.hpp>

#include "framework/xml/XmlName.h"

/// @file
/// The names of the extensions that carry a sub-model's assessment figures.

namespace nbscore::assessment {

inline constexpr XmlName meanPerformance{"meanPerformance"};
inline constexpr XmlName stdDevPerformance{"stdDevPerformance"};
inline constexpr XmlName trainingSampleSize{"trainingSampleSize"};

}  // namespace nbscore::assessment

namespace nbscore {

/// @param name may be null.
inline bool IsAssessmentName(const XMLCh* name) {
    using xercesc::XMLString;
    return XMLString::equals(name, assessment::meanPerformance) ||
           XMLString::equals(name, assessment::stdDevPerformance) ||
           XMLString::equals(name, assessment::trainingSampleSize);
}

}  // namespace nbscore
