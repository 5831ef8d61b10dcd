#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace nbscore {

/// A date, a time of day, or both, as ISO 8601 writes them.
struct IsoDateTime {
    /// Nothing for a time of day alone.
    std::optional<std::chrono::year_month_day> date;
    /// Whole seconds since midnight; 0 for a date alone.
    std::chrono::seconds timeOfDay{0};
    /// How far the clock is ahead of UTC; nothing where the text does not say.
    std::optional<std::chrono::minutes> offset;
};

/// What the whole text holds: "2024-02-29", "23:59:59" or both with a "T" or a blank between. A fraction of a second
/// is dropped. A time may end in "Z" or an offset such as "+02:00", up to 14 hours. Nothing for any other text, a day
/// that no calendar has, an hour 24 or a second 60.
std::optional<IsoDateTime> ReadIsoDateTime(std::string_view text);

}  // namespace nbscore
