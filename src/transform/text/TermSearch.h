#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "transform/evaluation/WorkBudget.h"
#include "transform/text/TextRules.h"

namespace nbscore {

/// A text as words, made ready for comparing.
struct Words {
    std::vector<WordSpan> spans;
    /// In small letters when case does not count.
    std::vector<std::u32string> words;

    /// Nothing when the budget does not suffice.
    static std::optional<Words> In(std::string_view text, const TextRules& rules, WorkBudget& budget);
};

/// The words of a text that terms are looked for in: numbered, equal ones alike, so that they need not be compared
/// letter by letter for each term.
class SearchedText {
public:
    /// Nothing when the budget does not suffice.
    static std::optional<SearchedText> In(std::string_view text, const TextRules& rules, WorkBudget& budget);

    const Words& GetWords() const { return words; }
    /// The number of each word.
    const std::vector<std::size_t>& GetNumbers() const { return numbers; }
    /// The numbers that a term's words have in the text; for one that does not occur there a number that no word has.
    std::vector<std::size_t> NumbersOf(const std::vector<std::u32string>& term) const;

private:
    explicit SearchedText(Words splitWords);

    Words words;
    std::vector<std::size_t> numbers;
    SeededMap<std::u32string, std::size_t> numbersByWord;
};

/// A place where a term stands.
struct Hit {
    /// Position of its first word.
    std::size_t start;
    std::size_t distance;
};

/// Every start of the term among the words, in order; hits may share words. A term without words has none. Nothing when
/// the budget does not suffice.
std::optional<std::vector<Hit>> FindTerm(const SearchedText& text, const std::vector<std::u32string>& term,
                                         std::size_t maxDistance, WorkBudget& budget);

/// How often the term stands in the text, anywhere; occurrences may overlap. An empty term never does.
std::size_t CountInside(std::string_view text, std::string_view term);

/// How often the most frequent word stands in the text.
std::size_t HighestFrequency(const SearchedText& text);

}  // namespace nbscore
