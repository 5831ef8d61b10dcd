#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "transform/functions/RegularExpression.h"

namespace nbscore {

/// Where a word stands in its text.
struct WordSpan {
    std::size_t begin;
    std::size_t end;
};

/// Splits texts into words, in time proportional to the text.
class WordSplitter {
public:
    /// @param separatorPattern what stands between words; usable.
    explicit WordSplitter(std::shared_ptr<const RegularExpression> separatorPattern);

    /// The words without the ASCII punctuation at their ends; punctuation alone is no word. An empty match separates
    /// nothing. Nothing when the budget does not suffice.
    std::optional<std::vector<WordSpan>> Split(std::string_view text, WorkBudget& budget) const;

private:
    std::shared_ptr<const RegularExpression> separator;
};

}  // namespace nbscore
