#pragma once

#include <cstddef>
#include <span>

/// @file
/// What the processor can do at the most, in the widest vectors that it has: the measure for how far scoring could go.

namespace nbscore::bench {

/// How many multiplications, or divisions, one round does.
std::size_t CountLanesOfARound();
/// Multiplies, or divides, numbers in registers, none waiting for another within a round. Returns what comes out, so
/// that it must be done.
double MultiplyInRegisters(std::size_t rounds);
double DivideInRegisters(std::size_t rounds);

/// Adds up all numbers, to read them.
double ReadMemory(std::span<const double> numbers);
void WriteMemory(std::span<double> numbers, double value);

}  // namespace nbscore::bench
