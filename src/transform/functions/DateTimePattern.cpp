#include <array>
#include <chrono>
#include <cstddef>
#include <string_view>

#include "framework/NumberText.h"
#include "transform/evaluation/ExpressionValue.h"
#include "transform/functions/IsoDateTime.h"

namespace nbscore {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::array<std::string_view, 7> dayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> monthNames = {"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};
constexpr std::size_t shortName = 3;

std::string Padded(int number, std::size_t width, char fill = '0') {
    std::string digits = FormatNumber(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), fill);
    return digits;
}

int YearOf(const year_month_day& date) {
    return static_cast<int>(date.year());
}

/// The first is 0.
int DayOfYear(const year_month_day& date) {
    return static_cast<int>((sys_days(date) - sys_days(date.year() / std::chrono::January / 1)).count());
}

std::chrono::weekday WeekdayOf(const year_month_day& date) {
    return std::chrono::weekday(sys_days(date));
}

/// For weeks that begin on a given day of the week. The days before the first such day of the year are week 0.
int WeekOfYear(const year_month_day& date, std::chrono::weekday firstDay) {
    const auto sinceFirstDay = static_cast<int>((WeekdayOf(date) - firstDay).count());
    return (DayOfYear(date) + 7 - sinceFirstDay) / 7;
}

/// In ISO 8601 a week belongs to the year that its Thursday is in.
year_month_day ThursdayOfWeek(const year_month_day& date) {
    const auto sinceMonday = WeekdayOf(date) - std::chrono::Monday;
    return sys_days(date) - sinceMonday + std::chrono::days(3);
}

std::string NameOf(const year_month_day& date, char conversion) {
    const std::string_view day = dayNames[WeekdayOf(date).c_encoding()];
    const std::string_view month = monthNames[static_cast<unsigned>(date.month()) - 1];
    if (conversion == 'A') return std::string(day);
    if (conversion == 'B') return std::string(month);
    return std::string((conversion == 'a' ? day : month).substr(0, shortName));
}

/// As in ISO 8601 and RFC 822, without colon: "+0200"; empty where the text has none.
std::string OffsetOf(const IsoDateTime& dateTime) {
    if (!dateTime.offset) return {};
    const auto minutes = static_cast<int>(std::chrono::abs(*dateTime.offset).count());
    const std::string sign = dateTime.offset->count() < 0 ? "-" : "+";
    return sign + Padded(minutes / 60, 2) + Padded(minutes % 60, 2);
}

/// Whether this conversion of strftime, such as d in %d, is a field of its own and needs a date.
bool IsDateField(char conversion) {
    return std::string_view("aAbBhCdegGjmuUVwWyY").find(conversion) != std::string_view::npos;
}

/// The field; the date must be there.
std::string DateFieldOf(const IsoDateTime& dateTime, char conversion) {
    const year_month_day& date = *dateTime.date;
    switch (conversion) {
        case 'C':
            return Padded(YearOf(date) / 100, 2);
        case 'd':
            return Padded(static_cast<int>(static_cast<unsigned>(date.day())), 2);
        case 'e':
            return Padded(static_cast<int>(static_cast<unsigned>(date.day())), 2, ' ');
        case 'g':
            return Padded((YearOf(ThursdayOfWeek(date)) + 100) % 100, 2);
        case 'G':
            return Padded(YearOf(ThursdayOfWeek(date)), 4);
        case 'j':
            return Padded(DayOfYear(date) + 1, 3);
        case 'm':
            return Padded(static_cast<int>(static_cast<unsigned>(date.month())), 2);
        case 'u':
            return Padded(static_cast<int>(WeekdayOf(date).iso_encoding()), 1);
        case 'U':
            return Padded(WeekOfYear(date, std::chrono::Sunday), 2);
        case 'V':
            return Padded(DayOfYear(ThursdayOfWeek(date)) / 7 + 1, 2);
        case 'w':
            return Padded(static_cast<int>(WeekdayOf(date).c_encoding()), 1);
        case 'W':
            return Padded(WeekOfYear(date, std::chrono::Monday), 2);
        case 'y':
            return Padded(YearOf(date) % 100, 2);
        case 'Y':
            return Padded(YearOf(date), 4);
        default:
            return NameOf(date, conversion);
    }
}

/// The same for fields that need no date: those of the time of day, the offset from UTC, and plain characters.
bool IsTimeField(char conversion) {
    return std::string_view("HIMpSznt%").find(conversion) != std::string_view::npos;
}

std::string TimeFieldOf(const IsoDateTime& dateTime, char conversion) {
    const std::chrono::hh_mm_ss time(dateTime.timeOfDay);
    const auto hour = static_cast<int>(time.hours().count());
    switch (conversion) {
        case 'H':
            return Padded(hour, 2);
        case 'I':
            return Padded(hour % 12 == 0 ? 12 : hour % 12, 2);
        case 'M':
            return Padded(static_cast<int>(time.minutes().count()), 2);
        case 'p':
            return hour < 12 ? "AM" : "PM";
        case 'S':
            return Padded(static_cast<int>(time.seconds().count()), 2);
        case 'z':
            return OffsetOf(dateTime);
        case 'n':
            return "\n";
        case 't':
            return "\t";
        default:
            return "%";
    }
}

/// The conversions that this one stands for; empty when it stands for itself.
std::string_view ExpansionOf(char conversion) {
    switch (conversion) {
        case 'c':
            return "%a %b %e %H:%M:%S %Y";
        case 'D':
        case 'x':
            return "%m/%d/%y";
        case 'F':
            return "%Y-%m-%d";
        case 'r':
            return "%I:%M:%S %p";
        case 'R':
            return "%H:%M";
        case 'T':
        case 'X':
            return "%H:%M:%S";
        default:
            return {};
    }
}

bool IsConversion(char character) {
    return IsDateField(character) || IsTimeField(character) || !ExpansionOf(character).empty();
}

/// False when the pattern has a field that the date and time lacks. Expansions consist of fields only: so the recursion
/// is one level deep.
bool AppendFormatted(std::string& text, const IsoDateTime& dateTime, std::string_view pattern) {
    for (std::size_t i = 0; i < pattern.size() && text.size() <= longestText; ++i) {
        if (pattern[i] != '%') {
            text += pattern[i];
            continue;
        }
        const char conversion = pattern[++i];
        if (const std::string_view expansion = ExpansionOf(conversion); !expansion.empty()) {
            if (!AppendFormatted(text, dateTime, expansion)) return false;
        } else if (IsTimeField(conversion)) {
            text += TimeFieldOf(dateTime, conversion);
        } else if (dateTime.date) {
            text += DateFieldOf(dateTime, conversion);
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string FaultOfDateTimePattern(std::string_view pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%') continue;
        if (++i == pattern.size()) return "its last conversion is not complete";
        if (!IsConversion(pattern[i])) return "it has a conversion that is not supported";
    }
    return {};
}

std::optional<std::string> FormatDateTime(const IsoDateTime& dateTime, std::string_view pattern) {
    if (!FaultOfDateTimePattern(pattern).empty()) return std::nullopt;
    std::string text;
    if (!AppendFormatted(text, dateTime, pattern) || text.size() > longestText) return std::nullopt;
    return text;
}

}  // namespace nbscore
