#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nbscore {

/// The different numbers of a column, ascending, and how often each occurred with each category.
struct CountedNumbers {
    std::vector<double> numbers;
    std::vector<std::vector<std::uint64_t>> counts;
    /// Whether a number stands for itself alone. Otherwise it stands for those up to it and above the one before, and a
    /// cut can only be made right behind it.
    bool areExact = true;
};

/// @{
/// Cutpoints, ascending; none where the numbers should stay together. Between two numbers that are exact a cut is the
/// number of the fewest digits there.

/// For at most so many bins, each with as nearly as possible the same count.
std::vector<double> CutIntoEqualCounts(const CountedNumbers& counted, std::size_t bins);
/// Fayyad and Irani's way: cuts in two where that makes the categories purest, and each part again, as long as what is
/// gained is worth more bits than it takes to describe the cut.
std::vector<double> CutByEntropy(const CountedNumbers& counted);
/// @}

}  // namespace nbscore
