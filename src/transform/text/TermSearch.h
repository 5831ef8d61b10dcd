#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "transform/evaluation/WorkBudget.h"
#include "transform/text/WordSplitter.h"

namespace nbscore {

/// How a term is looked for in a text.
struct TextRules {
    bool isCaseSensitive = false;
    /// How many characters of all its words together may differ.
    std::size_t maxDistance = 0;
    /// Whether words are compared, or the term is looked for anywhere, inside words too.
    bool isTokenized = true;
    /// Never null once it is read.
    std::shared_ptr<const WordSplitter> splitter;
};

/// A text as words, prepared for comparing.
struct Words {
    std::vector<WordSpan> spans;
    /// In lower case when case does not count.
    std::vector<std::u32string> words;

    /// Nothing when the budget does not suffice.
    static std::optional<Words> In(std::string_view text, const TextRules& rules, WorkBudget& budget);
};

/// The words of a text in which terms are looked for. Equal words have equal numbers, so that they need not be compared
/// letter by letter for each term.
class SearchedText {
public:
    /// Nothing when the budget does not suffice.
    static std::optional<SearchedText> In(std::string_view text, const TextRules& rules, WorkBudget& budget);

    const Words& GetWords() const { return words; }
    /// The number of each word.
    const std::vector<std::size_t>& GetNumbers() const { return numbers; }
    /// The numbers of a term's words in the text; for one that does not occur there, a number that no word has.
    std::vector<std::size_t> NumbersOf(const std::vector<std::u32string>& term) const;

private:
    explicit SearchedText(Words splitWords);

    Words words;
    std::vector<std::size_t> numbers;
    SeededMap<std::u32string, std::size_t> numbersByWord;
};

/// A place where a term occurs.
struct Hit {
    /// Position of its first word.
    std::size_t start;
    std::size_t distance;
};

/// Every place of the term among the words, in order; hits may share words. A term without words has none. Nothing when
/// the budget does not suffice.
std::optional<std::vector<Hit>> FindTerm(const SearchedText& text, const std::vector<std::u32string>& term,
                                         std::size_t maxDistance, WorkBudget& budget);

/// How often the term occurs in the text, inside words too; occurrences may overlap. An empty term never occurs.
std::size_t CountInside(std::string_view text, std::string_view term);

/// How often the most frequent word occurs in the text.
std::size_t HighestFrequency(const SearchedText& text);

}  // namespace nbscore
