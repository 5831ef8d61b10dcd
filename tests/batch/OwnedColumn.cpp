#include "batch/OwnedColumn.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>

namespace nbscore::test {
namespace {

bool IsAbsent(const CaseValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

bool HoldsText(std::span<const CaseValue> values) {
    return std::ranges::any_of(values,
                               [](const CaseValue& value) { return std::holds_alternative<std::string>(value); });
}

/// The different values of a column, and for each case its position among them, -1 for none. Numbers differ when any
/// bit does.
template <typename Value, typename Key>
std::vector<Value> DifferentValues(std::span<const CaseValue> values, const std::function<Key(const Value&)>& keyOf,
                                   std::vector<std::int32_t>& codes) {
    std::vector<Value> different;
    std::map<Key, std::int32_t> positions;
    for (const CaseValue& value : values) {
        codes.push_back(-1);
        if (IsAbsent(value)) continue;
        const Value& held = std::get<Value>(value);
        const auto [entry, isNew] = positions.try_emplace(keyOf(held), static_cast<std::int32_t>(different.size()));
        if (isNew) different.push_back(held);
        codes.back() = entry->second;
    }
    return different;
}

}  // namespace

OwnedColumn::OwnedColumn(std::span<const CaseValue> values, const DictionaryMaker& dictionaries, Randomness& random) {
    if (std::ranges::all_of(values, IsAbsent) && OneIn(2, random)) {
        column = AbsentColumn{};
        return;
    }
    if (OneIn(2, random)) {
        HoldCodes(values, dictionaries, random);
        return;
    }
    MarkAbsent(values, random);
    if (HoldsText(values)) {
        HoldTexts(values, random);
    } else {
        HoldNumbers(values, random);
    }
}

void OwnedColumn::MarkAbsent(std::span<const CaseValue> values, Randomness& random) {
    if (std::ranges::none_of(values, IsAbsent) && OneIn(2, random)) return;
    validity.offset = static_cast<std::size_t>(Between(0, 20, random));
    bits.assign((validity.offset + values.size()) / 8 + 1, static_cast<std::uint8_t>(Between(0, 255, random)));
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t position = validity.offset + i;
        const auto bit = static_cast<std::uint8_t>(1U << (position % 8));
        std::uint8_t& byte = bits[position / 8];
        byte = static_cast<std::uint8_t>(IsAbsent(values[i]) ? byte & ~bit : byte | bit);
    }
    validity.bits = bits.data();
}

void OwnedColumn::HoldNumbers(std::span<const CaseValue> values, Randomness& random) {
    const double filler = OneIn(2, random) ? 1.0 : std::numeric_limits<double>::quiet_NaN();
    for (const CaseValue& value : values)
        numbers.push_back(IsAbsent(value) ? filler : std::get<double>(value));
    column = NumberColumn{numbers, validity};
    if (OneIn(2, random)) HoldAsOtherNumbers(random);
}

void OwnedColumn::HoldAsOtherNumbers(Randomness& random) {
    const std::vector<std::function<bool()>> ways = {
        [this] { return HoldAs(floats); },     [this] { return HoldAs(whole8); },
        [this] { return HoldAs(whole16); },    [this] { return HoldAs(whole32); },
        [this] { return HoldAs(whole64); },    [this] { return HoldAs(unsigned8); },
        [this] { return HoldAs(unsigned16); }, [this] { return HoldAs(unsigned32); },
        [this] { return HoldAs(unsigned64); }};
    const auto first = static_cast<std::size_t>(Between(0, static_cast<int>(ways.size()) - 1, random));
    for (std::size_t i = 0; i < ways.size() && !ways[(first + i) % ways.size()](); ++i) {
    }
}

/// Changes nothing where the type does not hold a number with all its bits.
template <typename Number>
bool OwnedColumn::HoldAs(std::vector<Number>& held) {
    constexpr double highest = 9007199254740992.0;
    for (const double number : numbers) {
        const bool fits = std::abs(number) <= highest &&
                          number >= static_cast<double>(std::numeric_limits<Number>::lowest()) &&
                          number <= static_cast<double>(std::numeric_limits<Number>::max());
        const auto same = fits ? static_cast<double>(static_cast<Number>(number)) : 0.0;
        if (!fits || std::bit_cast<std::uint64_t>(same) != std::bit_cast<std::uint64_t>(number)) return false;
    }
    for (const double number : numbers)
        held.push_back(static_cast<Number>(number));
    column = NumbersOf<Number>{held, validity};
    return true;
}

void OwnedColumn::HoldTexts(std::span<const CaseValue> values, Randomness& random) {
    const std::string filler = OneIn(2, random) ? "" : "filler";
    for (const CaseValue& value : values)
        texts.push_back(IsAbsent(value) ? filler : std::get<std::string>(value));
    switch (Between(0, 2, random)) {
        case 0:
            return HoldJoined(offsets32, random);
        case 1:
            return HoldJoined(offsets64, random);
        default:
            views.assign(texts.begin(), texts.end());
            column = TextViewColumn{views, validity};
    }
}

template <typename Offset>
void OwnedColumn::HoldJoined(std::vector<Offset>& offsets, Randomness& random) {
    bytes.assign(static_cast<std::size_t>(Between(0, 3, random)), 'x');
    offsets.push_back(static_cast<Offset>(bytes.size()));
    for (const std::string& text : texts) {
        bytes += text;
        offsets.push_back(static_cast<Offset>(bytes.size()));
    }
    column = TextColumn<Offset>{bytes.data(), offsets, validity};
}

void OwnedColumn::HoldCodes(std::span<const CaseValue> values, const DictionaryMaker& dictionaries,
                            Randomness& random) {
    if (HoldsText(values)) {
        texts = DifferentValues<std::string, std::string>(
            values, [](const std::string& text) { return text; }, codes);
        if (OneIn(2, random)) texts.push_back("a word of no case");
        views.assign(texts.begin(), texts.end());
        dictionary = dictionaries.ofTexts(views);
    } else {
        numbers = DifferentValues<double, std::uint64_t>(
            values, [](const double& number) { return std::bit_cast<std::uint64_t>(number); }, codes);
        dictionary = dictionaries.ofNumbers(numbers);
    }
    if (OneIn(2, random)) {
        MarkAbsent(values, random);
        // What no bit calls valid may be any code, even one that the dictionary does not have.
        const bool marked = validity.bits != nullptr;
        if (marked) std::ranges::replace(codes, -1, OneIn(2, random) ? -1 : 125);
    }
    const std::size_t size = dictionary->GetSize();
    const int narrowest = size < 125 ? 0 : size < 32000 ? 1 : 2;
    // -1 is no code without a sign.
    const bool mayBeUnsigned = std::ranges::find(codes, -1) == codes.end();
    switch (Between(narrowest, 3, random) + (mayBeUnsigned && OneIn(2, random) ? 4 : 0)) {
        case 0:
            return HoldCodesAs(whole8);
        case 1:
            return HoldCodesAs(whole16);
        case 2:
            return HoldCodesAs(whole32);
        case 3:
            return HoldCodesAs(whole64);
        case 4:
            return HoldCodesAs(unsigned8);
        case 5:
            return HoldCodesAs(unsigned16);
        case 6:
            return HoldCodesAs(unsigned32);
        default:
            return HoldCodesAs(unsigned64);
    }
}

template <typename Code>
void OwnedColumn::HoldCodesAs(std::vector<Code>& held) {
    for (const std::int32_t code : codes)
        held.push_back(static_cast<Code>(code));
    column = CodeColumn<Code>{held, &*dictionary, validity};
}

}  // namespace nbscore::test
