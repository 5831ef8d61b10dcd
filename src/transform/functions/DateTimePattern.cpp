#include "transform/functions/DateTimePattern.h"

#include <cstddef>

#include "transform/evaluation/ValueReading.h"
#include "transform/functions/DateTimeFields.h"

namespace nbscore {
namespace {

/// What a conversion made of others stands for; empty for all others.
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

/// False when a field is asked for that the date and time does not have. An expansion holds fields only: this goes
/// one level down and no deeper.
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
