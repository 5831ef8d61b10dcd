#include "count/NumberIndex.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "framework/SeededHash.h"

namespace nbscore {
namespace {

constexpr FactorRow noRow = 0;
constexpr std::size_t fewestRows = 64;
constexpr unsigned mostDroppedBits = 52;
constexpr std::uint64_t signBit = std::uint64_t{1} << 63;

/// Mixes all bits of a number into each other.
std::uint64_t Mix(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31);
}

/// @param keys ascending.
template <typename Round>
std::size_t CountRounded(const std::vector<std::uint64_t>& keys, const Round& round) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < keys.size(); ++i)
        count += static_cast<std::size_t>(i == 0 || round(keys[i]) != round(keys[i - 1]));
    return count;
}

}  // namespace

void DistinctEstimate::Add(std::uint64_t key) {
    const std::uint64_t hash = Mix(key);
    std::uint8_t& longest = longestRuns[hash >> (64 - bitsOfRegister)];
    const int run = std::countl_zero((hash << bitsOfRegister) | (std::uint64_t{1} << (bitsOfRegister - 1))) + 1;
    longest = std::max(longest, static_cast<std::uint8_t>(run));
}

void DistinctEstimate::Add(const DistinctEstimate& other) {
    for (std::size_t i = 0; i < longestRuns.size(); ++i)
        longestRuns[i] = std::max(longestRuns[i], other.longestRuns[i]);
}

double DistinctEstimate::Get() const {
    const auto registers = static_cast<double>(longestRuns.size());
    double sum = 0.0;
    for (const std::uint8_t run : longestRuns)
        sum += std::ldexp(1.0, -run);
    const double count = 0.7213 / (1.0 + 1.079 / registers) * registers * registers / sum;
    const auto unused = static_cast<double>(std::ranges::count(longestRuns, 0));
    return count <= 2.5 * registers && unused > 0.0 ? registers * std::log(registers / unused) : count;
}

NumberIndex::NumberIndex() {
    MakeSlots(fewestRows);
}

std::uint64_t NumberIndex::KeyOf(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    return (bits & signBit) != 0 ? signBit - (bits & ~signBit) : signBit + bits;
}

double NumberIndex::NumberOf(std::uint64_t key) {
    return std::bit_cast<double>(key < signBit ? signBit | (signBit - key) : key - signBit);
}

std::uint64_t NumberIndex::RoundedBy(std::uint64_t key, unsigned bits) {
    const std::uint64_t dropped = (std::uint64_t{1} << bits) - 1;
    return (key + dropped) & ~dropped;
}

FactorRow NumberIndex::FindOrAddKey(std::uint64_t key) {
    if (droppedBits == 0) return FindOrAddRounded(key);
    estimate.Add(key);
    return FindOrAddRounded(Rounded(key));
}

/// Step by step for all of them: so the processor waits for many places of the memory at once.
void NumberIndex::FindOrAdd(std::span<const double> numbers, std::vector<FactorRow>& rows) {
    keys.clear();
    for (const double number : numbers) {
        const std::uint64_t key = KeyOf(number);
        if (droppedBits > 0) estimate.Add(key);
        keys.push_back(Rounded(key));
    }
    places.clear();
    for (const std::uint64_t key : keys)
        places.push_back(PlaceOf(key));
    rows.clear();
    const std::size_t sizeBefore = slots.size();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const bool isSame = slots.size() == sizeBefore;
        rows.push_back(FindOrAddRounded(keys[i], isSame ? places[i] : PlaceOf(keys[i])));
    }
}

std::size_t NumberIndex::PlaceOf(std::uint64_t key) const {
    return static_cast<std::size_t>(HashSeed::OfProcess().HashOfShort(key, sizeof(key))) & (slots.size() - 1);
}

/// @param place where it stands, or those begin that are looked through for it.
FactorRow NumberIndex::FindOrAddRounded(std::uint64_t key, std::size_t place) {
    const std::size_t last = slots.size() - 1;
    for (; slots[place].row != noRow; place = (place + 1) & last) {
        if (slots[place].key == key) return slots[place].row;
    }
    const auto row = static_cast<FactorRow>(numbersOfRows.size()) + firstKnownRow;
    slots[place] = {key, row};
    numbersOfRows.push_back(key);
    if (2 * numbersOfRows.size() > slots.size()) MakeSlots(2 * slots.size());
    return row;
}

/// @param count a power of two; at least twice the number of rows.
void NumberIndex::MakeSlots(std::size_t count) {
    slots.assign(count, Slot{0, noRow});
    const std::vector<std::uint64_t> known = std::exchange(numbersOfRows, {});
    numbersOfRows.reserve(known.size());
    for (const std::uint64_t key : known)
        FindOrAddRounded(key);
}

std::vector<FactorRow> NumberIndex::LimitRows(std::size_t most) {
    most = std::max(most, fewestRows);
    if (numbersOfRows.size() <= most) return {};
    std::vector<std::uint64_t> sorted = numbersOfRows;
    std::ranges::sort(sorted);
    unsigned bits = droppedBits;
    const auto countBy = [&sorted](unsigned by) {
        return CountRounded(sorted, [by](std::uint64_t key) { return RoundedBy(key, by); });
    };
    while (bits < mostDroppedBits && countBy(bits) > most)
        ++bits;
    return RoundTo(bits);
}

std::vector<FactorRow> NumberIndex::RoundAs(const NumberIndex& other) {
    return other.droppedBits > droppedBits ? RoundTo(other.droppedBits) : std::vector<FactorRow>();
}

std::vector<FactorRow> NumberIndex::Add(const NumberIndex& other) {
    std::vector<FactorRow> rows;
    rows.reserve(other.numbersOfRows.size());
    // What was rounded already is not what the other one has met.
    if (other.droppedBits > 0) estimate.Add(other.estimate);
    for (const std::uint64_t key : other.numbersOfRows)
        rows.push_back(other.droppedBits > 0 ? FindOrAddRounded(Rounded(key)) : FindOrAddKey(key));
    return rows;
}

std::vector<FactorRow> NumberIndex::RoundTo(unsigned bits) {
    if (bits == droppedBits) return {};
    if (droppedBits == 0) {
        for (const std::uint64_t key : numbersOfRows)
            estimate.Add(key);
    }
    droppedBits = bits;
    const std::vector<std::uint64_t> earlier = std::exchange(numbersOfRows, {});
    MakeSlots(slots.size());
    std::vector<FactorRow> newRows;
    newRows.reserve(earlier.size());
    for (const std::uint64_t key : earlier)
        newRows.push_back(FindOrAddRounded(Rounded(key)));
    return newRows;
}

}  // namespace nbscore
