#include "transform/text/TermSearch.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

/// How many characters must be inserted, removed or replaced to turn one word into the other; limit + 1 when that is
/// more than the limit. Takes at most EditDistanceCost steps: cells farther from the diagonal than the limit cannot be
/// part of a short enough path and are not computed.
std::size_t EditDistance(const std::u32string& left, const std::u32string& right, std::size_t limit) {
    const std::size_t longer = std::max(left.size(), right.size());
    limit = std::min(limit, longer);
    const std::size_t tooFar = limit + 1;
    if (longer - std::min(left.size(), right.size()) > limit) return tooFar;
    std::vector<std::size_t> row(right.size() + 1, tooFar);
    for (std::size_t j = 0; j <= std::min(limit, right.size()); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        const std::size_t begin = i > limit ? i - limit : 0;
        const std::size_t end = std::min(i + limit, right.size());
        std::size_t diagonal = begin > 0 ? row[begin - 1] : tooFar;
        std::size_t best = tooFar;
        for (std::size_t j = begin; j <= end; ++j) {
            const std::size_t above = row[j];
            std::size_t cell = above + 1;
            if (j > 0) cell = std::min({cell, row[j - 1] + 1, diagonal + (left[i - 1] == right[j - 1] ? 0 : 1)});
            row[j] = std::min(cell, tooFar);
            diagonal = above;
            best = std::min(best, row[j]);
        }
        if (best == tooFar) return tooFar;
    }
    return row[right.size()];
}

double EditDistanceCost(const std::u32string& left, const std::u32string& right, std::size_t limit) {
    const double band = 2.0 * static_cast<double>(std::min(limit, std::max(left.size(), right.size()))) + 1.0;
    const auto leftSize = static_cast<double>(left.size());
    const auto rightSize = static_cast<double>(right.size());
    return 1.0 + rightSize + leftSize * std::min(band, rightSize + 1.0);
}

/// What it takes to copy a word, or to look one up in a table.
constexpr double stepsPerWord = 40;

/// Bytes that are not UTF-8 stand for themselves: words are only compared.
std::u32string CharactersOf(std::string_view text) {
    std::u32string characters;
    while (!text.empty()) {
        const std::size_t size = SizeOfFirstCharacter(text);
        char32_t character = 0;
        for (const char byte : text.substr(0, size))
            character = (character << 8) | static_cast<unsigned char>(byte);
        characters += character;
        text.remove_prefix(size);
    }
    return characters;
}

/// Calls onStart for each place where the needle stands in the hay, in time proportional to both: after a mismatch it
/// goes on with the longest beginning of the needle that the hay has just ended in.
template <typename Hay, typename Needle, typename OnStart>
void ForEachStart(const Hay& hay, const Needle& needle, const OnStart& onStart) {
    if (needle.empty() || needle.size() > hay.size()) return;
    std::vector<std::size_t> borders(needle.size(), 0);
    std::size_t matched = 0;
    for (std::size_t i = 1; i < needle.size(); ++i) {
        while (matched > 0 && needle[i] != needle[matched])
            matched = borders[matched - 1];
        if (needle[i] == needle[matched]) ++matched;
        borders[i] = matched;
    }
    matched = 0;
    for (std::size_t i = 0; i < hay.size(); ++i) {
        while (matched > 0 && hay[i] != needle[matched])
            matched = borders[matched - 1];
        if (hay[i] == needle[matched]) ++matched;
        if (matched < needle.size()) continue;
        onStart(i + 1 - needle.size());
        matched = borders[matched - 1];
    }
}

/// The distance of a term from the words at each start. Words with equal numbers are equal and need no comparison; each
/// other word adds at least one, so that no more of them are compared than the distance may be.
class FuzzySearch {
public:
    FuzzySearch(const SearchedText& searchedText, const std::vector<std::u32string>& termWords,
                std::size_t greatestDistance)
        : text(searchedText.GetWords().words),
          textNumbers(searchedText.GetNumbers()),
          term(termWords),
          termNumbers(searchedText.NumbersOf(termWords)),
          maxDistance(greatestDistance) {}

    /// The distance at a start, above the maximum when it is no hit; nothing when the budget is spent.
    std::optional<std::size_t> DistanceAt(std::size_t start, WorkBudget& budget) const {
        std::size_t distance = 0;
        for (std::size_t i = 0; i < term.size() && distance <= maxDistance; ++i) {
            double cost = 1;
            if (textNumbers[start + i] != termNumbers[i]) {
                const std::size_t limit = maxDistance - distance;
                cost += EditDistanceCost(text[start + i], term[i], limit);
                if (!budget.Spend(cost)) return std::nullopt;
                distance += EditDistance(text[start + i], term[i], limit);
            } else if (!budget.Spend(cost)) {
                return std::nullopt;
            }
        }
        return distance;
    }

private:
    const std::vector<std::u32string>& text;
    const std::vector<std::size_t>& textNumbers;
    const std::vector<std::u32string>& term;
    std::vector<std::size_t> termNumbers;
    std::size_t maxDistance;
};

}  // namespace

std::optional<Words> Words::In(std::string_view text, const TextRules& rules, WorkBudget& budget) {
    auto spans = rules.splitter->Split(text, budget);
    if (!spans || !budget.Spend(stepsPerWord * static_cast<double>(spans->size()))) return std::nullopt;
    Words words{std::move(*spans), {}};
    words.words.reserve(words.spans.size());
    for (const WordSpan& span : words.spans) {
        const std::string_view word = text.substr(span.begin, span.end - span.begin);
        words.words.push_back(rules.isCaseSensitive ? CharactersOf(word) : CharactersOf(LowerCaseOf(word)));
    }
    return words;
}

SearchedText::SearchedText(Words splitWords) : words(std::move(splitWords)) {
    numbers.reserve(words.words.size());
    for (const std::u32string& word : words.words)
        numbers.push_back(numbersByWord.try_emplace(word, numbersByWord.size()).first->second);
}

std::optional<SearchedText> SearchedText::In(std::string_view text, const TextRules& rules, WorkBudget& budget) {
    auto words = Words::In(text, rules, budget);
    if (!words || !budget.Spend(stepsPerWord * static_cast<double>(words->words.size()))) return std::nullopt;
    return SearchedText(std::move(*words));
}

std::vector<std::size_t> SearchedText::NumbersOf(const std::vector<std::u32string>& term) const {
    std::vector<std::size_t> found;
    found.reserve(term.size());
    for (const std::u32string& word : term) {
        const auto number = numbersByWord.find(word);
        found.push_back(number == numbersByWord.end() ? numbersByWord.size() : number->second);
    }
    return found;
}

std::optional<std::vector<Hit>> FindTerm(const SearchedText& text, const std::vector<std::u32string>& term,
                                         std::size_t maxDistance, WorkBudget& budget) {
    std::vector<Hit> hits;
    const std::size_t wordsOfText = text.GetNumbers().size();
    if (term.empty() || term.size() > wordsOfText) return hits;
    if (!budget.Spend(static_cast<double>(wordsOfText) + stepsPerWord * static_cast<double>(term.size()))) {
        return std::nullopt;
    }
    if (maxDistance == 0) {
        ForEachStart(text.GetNumbers(), text.NumbersOf(term), [&hits](std::size_t start) {
            hits.push_back({start, 0});
        });
        return hits;
    }
    const FuzzySearch search(text, term, maxDistance);
    for (std::size_t start = 0; start + term.size() <= wordsOfText; ++start) {
        const auto distance = search.DistanceAt(start, budget);
        if (!distance) return std::nullopt;
        if (*distance <= maxDistance) hits.push_back({start, *distance});
    }
    return hits;
}

std::size_t CountInside(std::string_view text, std::string_view term) {
    std::size_t count = 0;
    ForEachStart(text, term, [&count](std::size_t) { ++count; });
    return count;
}

std::size_t HighestFrequency(const SearchedText& text) {
    std::vector<std::size_t> counts(text.GetNumbers().size(), 0);
    std::size_t highest = 0;
    for (const std::size_t number : text.GetNumbers())
        highest = std::max(highest, ++counts[number]);
    return highest;
}

}  // namespace nbscore
