#pragma once

#include <string>

#include "transform/functions/IsoDateTime.h"

namespace nbscore {

/// True for a conversion of strftime that is a field of its own and needs a date, such as d in %d.
bool IsDateField(char conversion);
/// The field; the date must be there.
std::string DateFieldOf(const IsoDateTime& dateTime, char conversion);

/// The same for the fields that need no date: of the time of day, the offset from UTC, and plain characters.
bool IsTimeField(char conversion);
std::string TimeFieldOf(const IsoDateTime& dateTime, char conversion);

}  // namespace nbscore
