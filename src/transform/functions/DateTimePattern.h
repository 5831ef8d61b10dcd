#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "transform/functions/IsoDateTime.h"

namespace nbscore {

/// What is wrong with a pattern of POSIX strftime, a clause; empty when nothing is. Patterns are read and carried out
/// here, with the names and forms of the POSIX locale: no document's pattern ever reaches strftime.
///
/// Conversions: those of POSIX, apart from Z, E and O, which depend on the place: a A b B c C d D e F g G h H I j m M n
/// p r R S t T u U V w W x X y Y z and %.
std::string FaultOfDateTimePattern(std::string_view pattern);

/// The date and time by the pattern, as they are written whatever their offset. Nothing when the pattern has a fault,
/// when it asks a time of day alone for a date, and when the result would be longer than longestText.
std::optional<std::string> FormatDateTime(const IsoDateTime& dateTime, std::string_view pattern);

}  // namespace nbscore
