#include "transform/functions/Families.h"

#include <chrono>
#include <cmath>
#include <optional>

#include "transform/functions/IsoDateTime.h"

namespace nbscore {
namespace {

using std::chrono::sys_days;

std::optional<sys_days> StartOfYear(const ExpressionValue& argument) {
    const auto year = NumberOf(argument);
    if (!year || !(*year >= 0.0 && *year <= 9999.0) || std::trunc(*year) != *year) return std::nullopt;
    return sys_days(std::chrono::year(static_cast<int>(*year)) / std::chrono::January / 1);
}

std::optional<IsoDateTime> DateTimeOf(const ExpressionValue& argument) {
    return ReadIsoDateTime(TextOf(argument));
}

ExpressionValue DaysSinceYear(Arguments arguments) {
    const auto dateTime = DateTimeOf(arguments[0]);
    const auto start = StartOfYear(arguments[1]);
    if (!dateTime || !dateTime->date || !start) return {};
    return static_cast<double>((sys_days(*dateTime->date) - *start).count());
}

ExpressionValue SecondsSinceYear(Arguments arguments) {
    const auto dateTime = DateTimeOf(arguments[0]);
    const auto start = StartOfYear(arguments[1]);
    if (!dateTime || !dateTime->date || !start) return {};
    const auto offset = dateTime->offset.value_or(std::chrono::minutes(0));
    const std::chrono::seconds distance = sys_days(*dateTime->date) - *start + dateTime->timeOfDay - offset;
    return static_cast<double>(distance.count());
}

ExpressionValue SecondsSinceMidnight(Arguments arguments) {
    const auto dateTime = DateTimeOf(arguments[0]);
    return dateTime ? ExpressionValue(static_cast<double>(dateTime->timeOfDay.count())) : ExpressionValue();
}

constexpr BuiltInFunction dateFunctions[] = {
    {"dateDaysSinceYear", "date, year", 2, 2, MissingRule::GivesMissing, ValueKind::Number,
     "The days from 1 January of the year to the date, as it is written, whatever its offset; negative before; "
     "undefined when there is no date, or no whole year from 0 to 9999.",
     DaysSinceYear},
    {"dateSecondsSinceYear", "date, year", 2, 2, MissingRule::GivesMissing, ValueKind::Number,
     "The whole seconds from 1 January of the year, 00:00:00, to the date and time, negative before, both in UTC when "
     "an offset is written; undefined when there is no date, or no whole year from 0 to 9999.",
     SecondsSinceYear},
    {"dateSecondsSinceMidnight", "time", 1, 1, MissingRule::GivesMissing, ValueKind::Number,
     "The whole seconds from 00:00:00 to the time of day, as it is written whatever its offset, 0 for a date alone; "
     "undefined when there is neither.",
     SecondsSinceMidnight}};

}  // namespace

std::span<const BuiltInFunction> DateFunctions() {
    return dateFunctions;
}

}  // namespace nbscore
