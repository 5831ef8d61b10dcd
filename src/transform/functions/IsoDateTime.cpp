#include "transform/functions/IsoDateTime.h"

#include <cstddef>

namespace nbscore {
namespace {

/// Takes parts off the front of a text.
struct Taker {
    std::string_view rest;

    bool Take(char expected) {
        if (!rest.starts_with(expected)) return false;
        rest.remove_prefix(1);
        return true;
    }

    bool TakeOneOf(std::string_view expected) {
        if (rest.empty() || expected.find(rest.front()) == std::string_view::npos) return false;
        rest.remove_prefix(1);
        return true;
    }

    std::optional<int> TakeDigit() {
        if (rest.empty() || rest.front() < '0' || rest.front() > '9') return std::nullopt;
        const int digit = rest.front() - '0';
        rest.remove_prefix(1);
        return digit;
    }

    /// A number of exactly this many digits, not above the limit.
    std::optional<int> TakeNumber(std::size_t digits, int limit) {
        int number = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            const auto digit = TakeDigit();
            if (!digit) return std::nullopt;
            number = number * 10 + *digit;
        }
        return number <= limit ? std::optional(number) : std::nullopt;
    }
};

std::optional<std::chrono::year_month_day> TakeDate(Taker& text) {
    const auto year = text.TakeNumber(4, 9999);
    if (!year || !text.Take('-')) return std::nullopt;
    const auto month = text.TakeNumber(2, 12);
    if (!month || !text.Take('-')) return std::nullopt;
    const auto day = text.TakeNumber(2, 31);
    if (!day) return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    return date.ok() ? std::optional(date) : std::nullopt;
}

/// A point and at least one digit, or nothing at all.
bool TakeFraction(Taker& text) {
    if (!text.Take('.')) return true;
    if (!text.TakeDigit()) return false;
    while (text.TakeDigit()) {
    }
    return true;
}

std::optional<std::chrono::seconds> TakeTime(Taker& text) {
    const auto hour = text.TakeNumber(2, 23);
    if (!hour || !text.Take(':')) return std::nullopt;
    const auto minute = text.TakeNumber(2, 59);
    if (!minute || !text.Take(':')) return std::nullopt;
    const auto second = text.TakeNumber(2, 59);
    if (!second || !TakeFraction(text)) return std::nullopt;
    return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
}

std::optional<std::chrono::minutes> TakeOffset(Taker& text) {
    if (text.Take('Z')) return std::chrono::minutes(0);
    const bool isBehind = text.rest.starts_with('-');
    if (!text.TakeOneOf("+-")) return std::nullopt;
    const auto hours = text.TakeNumber(2, 14);
    if (!hours || !text.Take(':')) return std::nullopt;
    const auto minutes = text.TakeNumber(2, *hours == 14 ? 0 : 59);
    if (!minutes) return std::nullopt;
    const std::chrono::minutes distance = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
    return isBehind ? -distance : distance;
}

/// The rest of the text as a time with or without an offset.
bool ReadTime(Taker& text, IsoDateTime& dateTime) {
    const auto time = TakeTime(text);
    if (!time) return false;
    dateTime.timeOfDay = *time;
    if (text.rest.empty()) return true;
    dateTime.offset = TakeOffset(text);
    return dateTime.offset && text.rest.empty();
}

}  // namespace

std::optional<IsoDateTime> ReadIsoDateTime(std::string_view text) {
    Taker taker{text};
    IsoDateTime dateTime;
    const bool isTimeAlone = text.size() > 2 && text[2] == ':';
    if (!isTimeAlone) {
        dateTime.date = TakeDate(taker);
        if (!dateTime.date) return std::nullopt;
        if (taker.rest.empty()) return dateTime;
        if (!taker.TakeOneOf("T ")) return std::nullopt;
    }
    return ReadTime(taker, dateTime) ? std::optional(dateTime) : std::nullopt;
}

}  // namespace nbscore
