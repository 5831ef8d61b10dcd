#include "framework/transform/text/WordSplitter.h"

#include <algorithm>

#include "framework/transform/functions/CodePoints.h"
#include "framework/transform/functions/PatternOptions.h"

namespace nbscore {
namespace {

bool IsPunctuation(char character) {
    const bool isVisible = character > ' ' && character <= '~';
    const bool isAlphanumeric = (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
                                (character >= 'a' && character <= 'z');
    return isVisible && !isAlphanumeric;
}

/// Searches windows of the text: a pattern may want to see all that it is given before it decides, and to show it the
/// whole rest each time would take the square of the text's length.
class SeparatorSearch {
public:
    SeparatorSearch(const RE2& separatorPattern, std::string_view wholeText)
        : separator(separatorPattern), text(wholeText) {}

    /// The next separator from the position on; false when there is none.
    bool Find(std::size_t position, WordSpan& found) const {
        while (position < text.size()) {
            const std::size_t windowEnd = std::min(position + windowSize, text.size());
            const bool isLastWindow = windowEnd == text.size();
            re2::StringPiece match;
            if (!separator.Match(PieceOf(text), position, windowEnd, RE2::UNANCHORED, &match, 1)) {
                if (isLastWindow) return false;
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
                return true;
            }
        }
        return false;
    }

private:
    static constexpr std::size_t longestSeparator = 256;
    static constexpr std::size_t windowSize = 2 * longestSeparator;

    const RE2& separator;
    std::string_view text;
};

void AddWord(std::vector<WordSpan>& words, std::string_view text, WordSpan word) {
    while (word.begin < word.end && IsPunctuation(text[word.begin]))
        ++word.begin;
    while (word.begin < word.end && IsPunctuation(text[word.end - 1]))
        --word.end;
    if (word.begin < word.end) words.push_back(word);
}

}  // namespace

WordSplitter::WordSplitter(std::string_view separatorPattern)
    : separator(PieceOf(separatorPattern), PatternOptions()) {}

std::vector<WordSpan> WordSplitter::Split(std::string_view text) const {
    const SeparatorSearch search(separator, text);
    std::vector<WordSpan> words;
    std::size_t begin = 0;
    WordSpan found{};
    while (search.Find(begin, found)) {
        AddWord(words, text, {begin, found.begin});
        begin = found.end;
    }
    AddWord(words, text, {begin, text.size()});
    return words;
}

}  // namespace nbscore
