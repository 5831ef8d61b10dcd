#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "common/ModelDocument.h"

/// @file
/// Made-up people: six texts, two numbers that stand for themselves, and two that are put in bins. The same numbers are
/// drawn every time.

namespace nbscore::bench {

struct PersonColumn {
    std::string_view name;
    InputKind kind;
    /// Of texts.
    std::vector<std::string_view> texts = {};
    /// Of numbers: the least one, and how many there are.
    std::size_t least = 0;
    std::size_t count = 0;
    /// Of bins.
    std::vector<std::size_t> cutpoints = {};
};

constexpr std::size_t numPersonColumns = 10;
const std::array<PersonColumn, numPersonColumns>& GetPersonColumns();

/// For each column which of its texts or numbers a person has, from 0.
using Person = std::array<std::size_t, numPersonColumns>;

class PeopleDrawer {
public:
    explicit PeopleDrawer(std::uint64_t seed) : random(seed) {}

    /// All values of a column are equally likely.
    Person Draw();
    /// Values in the back of a column's list are more likely for people who say yes.
    Person DrawWhoSays(bool yes);
    std::size_t DrawBelow(std::size_t end) { return static_cast<std::size_t>(random() % end); }

private:
    std::mt19937_64 random;
};

/// The row of a table, without the line's end.
void WritePerson(std::ostream& out, const Person& person);
/// The category of a person's value in a column; of bins the bin, which is closed on its right.
std::size_t CategoryOf(const PersonColumn& column, std::size_t value);

}  // namespace nbscore::bench
