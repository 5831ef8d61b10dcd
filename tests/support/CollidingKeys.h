#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// Different keys that std::hash of GCC's standard library, whose seed everybody knows, puts together: what somebody
/// would write into documents and tables who wants them to take long.

namespace nbscore::test {

/// So many texts, of letters, digits and a few signs that names may have, all of one length. Behind the prefix each has
/// the same hash.
std::vector<std::string> CollidingTexts(std::size_t count, const std::string& prefix = "");

/// Finite numbers that fall into the same place of a table that grows to hold so many, and of the smaller ones that it
/// had before: two numbers never have the same hash.
std::vector<double> CollidingNumbers(std::size_t count);

/// Words of sixteen letters beyond the first plane of Unicode, in UTF-8. Where a word is kept as one number of 32 bits
/// for each letter, its bytes in UTF-8, all have the same hash. There are 14,641.
std::vector<std::string> CollidingWords();

}  // namespace nbscore::test
