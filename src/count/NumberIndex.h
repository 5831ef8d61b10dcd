#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "factors/FactorRow.h"

namespace nbscore {

/// Roughly how many different numbers there were, in a few thousand bytes: the same for any order of them, and of any
/// partition into several that are put together.
///
/// Each number's hash chooses a register, which keeps the longest run of zeros that the rest of such a hash began with.
/// The estimate is within 5 % nearly always. The hash has no seed, because its result decides what a model holds.
class DistinctEstimate {
public:
    void Add(std::uint64_t key);
    void Add(const DistinctEstimate& other);
    double Get() const;

private:
    static constexpr unsigned bitsOfRegister = 12;

    std::array<std::uint8_t, std::size_t{1} << bitsOfRegister> longestRuns{};
};

/// Finds the row of a number. Where there are more different numbers than rows, numbers are rounded up to fewer
/// significant bits, so that those that are nearly the same share a row; a number is never above the one that stands
/// for it.
///
/// The rounding is the finest one by which all numbers so far have room. So it follows from the set of numbers alone:
/// not from their order, nor from how they were split up before they were put together.
class NumberIndex {
public:
    NumberIndex();

    /// The number's row; a new one, the next, where it has none.
    FactorRow FindOrAdd(double number) { return FindOrAddKey(KeyOf(number)); }
    /// The rows of many numbers.
    void FindOrAdd(std::span<const double> numbers, std::vector<FactorRow>& rows);
    std::size_t CountRows() const { return numbersOfRows.size(); }
    /// Which number a row stands for, from firstKnownRow on.
    double GetNumber(FactorRow row) const { return NumberOf(numbersOfRows[row - firstKnownRow]); }

    /// Rounds until there are at most so many rows. Tells which of the new rows each old one has become; empty when
    /// nothing changed. At least 64 rows are left.
    std::vector<FactorRow> LimitRows(std::size_t most);
    /// Rounds as the other one at least, and tells as above.
    std::vector<FactorRow> RoundAs(const NumberIndex& other);
    /// Takes in the other one's numbers, which may not be rounded more than those here. Tells which of the rows here
    /// each of its rows is.
    std::vector<FactorRow> Add(const NumberIndex& other);

    /// How many bits of the 52 behind a number's first one are rounded away.
    unsigned GetDroppedBits() const { return droppedBits; }
    /// How many different numbers there were: exactly, unless some share a row.
    double CountDistinct() const {
        return droppedBits == 0 ? static_cast<double>(numbersOfRows.size()) : estimate.Get();
    }

private:
    struct Slot {
        std::uint64_t key;
        FactorRow row;
    };

    /// A number's bits, turned so that they have the order of the numbers; 0 and -0 are one.
    static std::uint64_t KeyOf(double number);
    static double NumberOf(std::uint64_t key);
    std::uint64_t Rounded(std::uint64_t key) const { return RoundedBy(key, droppedBits); }
    static std::uint64_t RoundedBy(std::uint64_t key, unsigned bits);
    FactorRow FindOrAddKey(std::uint64_t key);
    FactorRow FindOrAddRounded(std::uint64_t key) { return FindOrAddRounded(key, PlaceOf(key)); }
    FactorRow FindOrAddRounded(std::uint64_t key, std::size_t place);
    std::size_t PlaceOf(std::uint64_t key) const;
    void MakeSlots(std::size_t count);
    std::vector<FactorRow> RoundTo(unsigned bits);

    std::vector<Slot> slots;
    std::vector<std::uint64_t> numbersOfRows;
    /// Of numbers that are looked for together.
    std::vector<std::uint64_t> keys;
    std::vector<std::size_t> places;
    unsigned droppedBits = 0;
    /// Of all keys before rounding, once there is any.
    DistinctEstimate estimate;
};

}  // namespace nbscore
