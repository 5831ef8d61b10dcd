#pragma once

#include <cstddef>
#include <string_view>

#include "table/TableScorer.h"

namespace nbscore::fuzz {

/// How a table is scored, read from the line in front of it: a letter for each choice that differs from the usual, as
/// the switch in TableChoices.cpp lists them. What is no such letter is passed over.
struct TableChoices {
    explicit TableChoices(std::string_view line);

    /// Which of the examples.
    std::size_t model = 0;
    TableScorerOptions options;
    /// How much of the table is there at once when it comes slowly.
    std::size_t bytesAtATime = 1;

    /// How many rows a case has in a result that is a table.
    std::size_t CountRowsPerCase() const;

private:
    void Take(char letter);
};

}  // namespace nbscore::fuzz
