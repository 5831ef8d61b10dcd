#include "naivebayes/ValuePercentFinder.h"

#include <cmath>

#include "naivebayes/BorrowedText.h"

namespace {

std::size_t Search(const ValuePercentFinder::Entries& entries, const ScoreValue* value, std::size_t from) {
    if (value == nullptr) return ValuePercentFinder::notFound;
    for (std::size_t i = from; i < entries.size(); ++i) {
        if (entries[i].first != nullptr && *entries[i].first == *value) return i;
    }
    return ValuePercentFinder::notFound;
}

/// A NaN, for one, does not. Numbers and texts need no comparison to tell.
bool EqualsItself(const ScoreValue& value) {
    switch (value.GetType()) {
        case ScoreValue::Numeric:
            return !std::isnan(value.GetDouble());
        case ScoreValue::String:
            return true;
        default:
            // A foreign class may hold a value that equals nothing.
            return value == value;
    }
}

}  // namespace

std::size_t ValuePercentFinder::FindNext(const Entries& entries, const ScoreValue* value) {
    std::size_t position = expected < entries.size() ? expected : 0;
    expected = position;
    if (!IsExpected(entries, value)) {
        if (entries.size() > longestSearchedList) ExtendIndex(entries);
        position = Find(entries, value);
    }
    expected = (position == notFound ? entries.size() : position) + 1;
    return position;
}

std::size_t ValuePercentFinder::Find(const Entries& entries, const ScoreValue* value) const {
    if (value == nullptr || !IsAnsweredByIndex(*value)) return Search(entries, value, 0);
    const std::size_t position = FindInIndex(*value);
    return position == notFound ? Search(entries, value, indexed) : position;
}

void ValuePercentFinder::Reset() {
    *this = ValuePercentFinder();
}

// No entry before this one can equal the value: this entry was appended because none did.
bool ValuePercentFinder::IsExpected(const Entries& entries, const ScoreValue* value) const {
    return value != nullptr && expected < entries.size() && entries[expected].first == value && EqualsItself(*value);
}

void ValuePercentFinder::ExtendIndex(const Entries& entries) {
    for (; indexed < entries.size(); ++indexed)
        IndexEntry(indexed, entries[indexed].first);
}

void ValuePercentFinder::IndexEntry(std::size_t position, const ScoreValue* value) {
    if (value == nullptr) return;
    switch (value->GetType()) {
        case ScoreValue::Numeric:
            // A NaN is never found. Negative and positive zero are one key, as they are one value.
            if (!std::isnan(value->GetDouble())) positionsByNumber.try_emplace(value->GetDouble(), position);
            break;
        case ScoreValue::String:
            positionsByText.try_emplace(value->GetString(), position);
            break;
        default:
            hasOtherTypes = true;
    }
}

bool ValuePercentFinder::IsAnsweredByIndex(const ScoreValue& value) const {
    if (indexed == 0 || hasOtherTypes) return false;
    return value.GetType() == ScoreValue::Numeric || value.GetType() == ScoreValue::String;
}

std::size_t ValuePercentFinder::FindInIndex(const ScoreValue& value) const {
    if (value.GetType() == ScoreValue::Numeric) {
        const auto entry = positionsByNumber.find(value.GetDouble());
        return entry == positionsByNumber.end() ? notFound : entry->second;
    }
    const auto entry = positionsByText.find(nbscore::BorrowedText(value).Get());
    return entry == positionsByText.end() ? notFound : entry->second;
}
