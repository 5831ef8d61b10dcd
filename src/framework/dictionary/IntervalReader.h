#pragma once

#include "framework/ValueInterval.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The range that an Interval element of a data dictionary declares. Throws VeskException 2 without `closure`,
/// 12 for a closure that is none, 9 for a margin that is present and no number.
ValueInterval ReadInterval(const xercesc::DOMElement* interval);

}  // namespace nbscore
