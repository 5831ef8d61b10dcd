#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// Different keys with the same hash in GCC's standard library, whose seed is known: an attacker would put them into
/// documents and tables to make them take long.

namespace nbscore::test {

/// This many texts of letters, digits and a few signs that names may have, all of one length. With the prefix in front
/// all have the same hash.
std::vector<std::string> CollidingTexts(std::size_t count, const std::string& prefix = "");

/// Finite numbers that fall into one bucket of a table that grows to hold this many, at every size on the way. (No two
/// numbers have the same hash.)
std::vector<double> CollidingNumbers(std::size_t count);

/// Words of sixteen letters beyond the first plane of Unicode, in UTF-8. Kept as one 32-bit number for each
/// letter, its bytes in UTF-8, all words have the same hash. There are 14,641.
std::vector<std::string> CollidingWords();

}  // namespace nbscore::test
