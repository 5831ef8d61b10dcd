#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/transform/WorkBudget.h"
#include "framework/transform/text/TextRules.h"

namespace nbscore {

/// A text as words, made ready for comparing.
struct Words {
    std::vector<WordSpan> spans;
    /// In small letters when case does not count.
    std::vector<std::u32string> words;

    /// Nothing when the budget does not suffice.
    static std::optional<Words> In(std::string_view text, const TextRules& rules, WorkBudget& budget);
};

/// A place where a term stands.
struct Hit {
    /// Position of its first word.
    std::size_t start;
    std::size_t distance;
};

/// Every start of the term among the words, in order; hits may share words. A term without words has none. Nothing when
/// the budget does not suffice.
std::optional<std::vector<Hit>> FindTerm(const Words& text, const std::vector<std::u32string>& term,
                                         std::size_t maxDistance, WorkBudget& budget);

/// How often the term stands in the text, anywhere; occurrences may overlap. An empty term never does.
std::size_t CountInside(std::string_view text, std::string_view term);

/// How often the most frequent word stands in the text. Nothing when the budget does not suffice.
std::optional<std::size_t> HighestFrequency(const Words& text, WorkBudget& budget);

}  // namespace nbscore
