#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/Column.h"
#include "batch/InputTable.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// Makes the dictionary of an input.
struct DictionaryMaker {
    std::function<InputDictionary(std::span<const std::string_view>)> ofTexts;
    std::function<InputDictionary(std::span<const double>)> ofNumbers;
};

/// A column in a shape drawn at random from all that can hold its values, and the memory behind it. What stands where
/// there is no value is drawn too, as are the bits, bytes and offsets in front of what the column begins with.
class OwnedColumn {
public:
    OwnedColumn(std::span<const CaseValue> values, const DictionaryMaker& dictionaries, Randomness& random);
    OwnedColumn(const OwnedColumn&) = delete;
    OwnedColumn& operator=(const OwnedColumn&) = delete;

    const Column& Get() const { return column; }

private:
    void MarkAbsent(std::span<const CaseValue> values, Randomness& random);
    void HoldNumbers(std::span<const CaseValue> values, Randomness& random);
    void HoldTexts(std::span<const CaseValue> values, Randomness& random);
    template <typename Offset>
    void HoldJoined(std::vector<Offset>& offsets, Randomness& random);
    void HoldCodes(std::span<const CaseValue> values, const DictionaryMaker& dictionaries, Randomness& random);
    /// Numbers as they are held by any type that holds all of them.
    void HoldAsOtherNumbers(Randomness& random);
    template <typename Number>
    bool HoldAs(std::vector<Number>& held);
    template <typename Code>
    void HoldCodesAs(std::vector<Code>& codes);

    Column column;
    std::vector<std::uint8_t> bits;
    Validity validity;
    std::vector<double> numbers;
    std::vector<float> floats;
    std::vector<std::string> texts;
    std::vector<std::string_view> views;
    std::string bytes;
    std::vector<std::int32_t> offsets32;
    std::vector<std::int64_t> offsets64;
    std::optional<InputDictionary> dictionary;
    std::vector<std::int64_t> whole64;
    std::vector<std::int32_t> whole32;
    std::vector<std::int16_t> whole16;
    std::vector<std::int8_t> whole8;
    std::vector<std::uint64_t> unsigned64;
    std::vector<std::uint32_t> unsigned32;
    std::vector<std::uint16_t> unsigned16;
    std::vector<std::uint8_t> unsigned8;
    std::vector<std::int32_t> codes;
};

}  // namespace nbscore::test
