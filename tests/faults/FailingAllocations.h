#pragma once

#include <cstdint>

/// @file
/// Makes memory run out on purpose. FailingAllocations.cpp replaces operator new in the program that links it and in
/// every library of that program.

namespace nbscore::test {

enum class Shortage {
    /// One allocation fails and the next ones succeed, as when something large does not fit.
    OfOne,
    /// From one on all fail, so that error handling gets no memory either.
    OfAllThatFollow
};

/// Counts allocations from now on and lets the one with this number fail, counted from 1. An allocation of the library
/// of regular expressions does not fail; the next one of other code does.
void LetAllocationFail(std::uint64_t number, Shortage shortage);
/// Lets all succeed again. True when one failed.
bool EndShortage();

/// How many allocations have not been freed.
std::int64_t CountLiveAllocations();

}  // namespace nbscore::test
