#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace nbscore {

/// A date, a time of day, or both, as ISO 8601 writes them.
struct IsoDateTime {
    /// Nothing for a time of day alone.
    std::optional<std::chrono::year_month_day> date;
    /// Whole seconds since midnight; 0 for a date alone.
    std::chrono::seconds timeOfDay{0};
    /// How far the clock is ahead of UTC; nothing where the text has no offset.
    std::optional<std::chrono::minutes> offset;
};

/// Reads "2024-02-29", "23:59:59" or both with a "T" or a blank between. A fraction of a second is dropped. A time may
/// end in "Z" or an offset such as "+02:00", of at most 14 hours. Nothing for any other text, a day that the calendar
/// does not have, hour 24 or second 60.
std::optional<IsoDateTime> ReadIsoDateTime(std::string_view text);

/// What is wrong with a pattern of POSIX strftime, as a clause; empty when nothing is. We interpret patterns ourselves,
/// with the names and forms of the POSIX locale: a document's pattern never reaches strftime.
///
/// Conversions: those of POSIX except Z, E and O, which depend on the locale: a A b B c C d D e F g G h H I j m M n p r
/// R S t T u U V w W x X y Y z and %.
std::string FaultOfDateTimePattern(std::string_view pattern);

/// The date and time formatted by the pattern, not converted to UTC. Nothing when the pattern has a fault, when it
/// needs a date and there is only a time of day, and when the result would be longer than longestText.
std::optional<std::string> FormatDateTime(const IsoDateTime& dateTime, std::string_view pattern);

}  // namespace nbscore
