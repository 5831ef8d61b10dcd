#include "transform/text/WordSplitter.h"

#include <algorithm>
#include <utility>

#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

bool IsPunctuation(char character) {
    const bool isVisible = character > ' ' && character <= '~';
    const bool isAlphanumeric = (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
                                (character >= 'a' && character <= 'z');
    return isVisible && !isAlphanumeric;
}

/// Searches the text window by window: some patterns read all they are given before they decide, and to give them the
/// whole rest for each separator would take time by the square of the text's length.
class SeparatorSearch {
public:
    using Search = RegularExpression::Search;

    SeparatorSearch(const RegularExpression& separatorPattern, std::string_view wholeText, WorkBudget& budgetOfCase)
        : separator(separatorPattern), text(wholeText), budget(budgetOfCase) {}

    /// Looks for the next separator from the position on.
    Search Find(std::size_t position, WordSpan& found) const {
        while (position < text.size()) {
            const std::size_t windowEnd = std::min(position + windowSize, text.size());
            const bool isLastWindow = windowEnd == text.size();
            std::string_view match;
            const Search search = separator.Find(text, position, windowEnd, {&match, 1}, budget);
            if (search == Search::BudgetIsSpent) return search;
            if (search == Search::NotFound) {
                if (isLastWindow) return search;
                position = windowEnd - longestSeparator;
                continue;
            }
            const auto begin = static_cast<std::size_t>(match.data() - text.data());
            const bool mayBeCut = !isLastWindow && windowEnd - begin < longestSeparator;
            if (match.empty()) {
                position = begin + std::max<std::size_t>(SizeOfFirstCharacter(text.substr(begin)), 1);
            } else if (mayBeCut) {
                position = begin;
            } else {
                found = {begin, begin + match.size()};
                return search;
            }
        }
        return Search::NotFound;
    }

private:
    static constexpr std::size_t longestSeparator = 256;
    static constexpr std::size_t windowSize = 2 * longestSeparator;

    const RegularExpression& separator;
    std::string_view text;
    WorkBudget& budget;
};

void AddWord(std::vector<WordSpan>& words, std::string_view text, WordSpan word) {
    while (word.begin < word.end && IsPunctuation(text[word.begin]))
        ++word.begin;
    while (word.begin < word.end && IsPunctuation(text[word.end - 1]))
        --word.end;
    if (word.begin < word.end) words.push_back(word);
}

}  // namespace

WordSplitter::WordSplitter(std::shared_ptr<const RegularExpression> separatorPattern)
    : separator(std::move(separatorPattern)) {}

std::optional<std::vector<WordSpan>> WordSplitter::Split(std::string_view text, WorkBudget& budget) const {
    using Search = RegularExpression::Search;
    const SeparatorSearch separators(*separator, text, budget);
    std::vector<WordSpan> words;
    std::size_t begin = 0;
    WordSpan found{};
    Search search = separators.Find(begin, found);
    while (search == Search::Found) {
        AddWord(words, text, {begin, found.begin});
        begin = found.end;
        search = separators.Find(begin, found);
    }
    if (search == Search::BudgetIsSpent) return std::nullopt;
    AddWord(words, text, {begin, text.size()});
    return words;
}

}  // namespace nbscore
