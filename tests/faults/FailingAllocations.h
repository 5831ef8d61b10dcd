#pragma once

#include <cstdint>

/// @file
/// Makes memory run out on purpose. A program that links FailingAllocations.cpp gets its memory from there: operator
/// new of the program itself and of every library in it.

namespace nbscore::test {

enum class Shortage {
    /// One allocation fails and the next ones succeed, as when something big does not fit.
    OfOne,
    /// All fail from one on, so that nothing that is needed on the way out can be had either.
    OfAllThatFollow
};

/// From now on allocations are counted, and the one of this number, from 1, fails; or the next one behind it, where it
/// is for the library of regular expressions, which cannot stand that.
void LetAllocationFail(std::uint64_t number, Shortage shortage);
/// All succeed again. True when one failed.
bool EndShortage();

/// How many allocations have not been given back.
std::int64_t CountLiveAllocations();

}  // namespace nbscore::test
