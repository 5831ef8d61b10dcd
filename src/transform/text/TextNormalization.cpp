#include "transform/text/TextNormalization.h"

#include <string_view>
#include <utility>

#include "transform/evaluation/ValueReading.h"
#include "transform/text/TermSearch.h"

namespace nbscore {
namespace {

/// Tables that go round in circles are stopped after so many rounds.
constexpr int mostRounds = 100;

/// What looking at a row takes, however short the text is.
constexpr double stepsPerRow = 100;

/// From left to right; what was replaced is not looked at again. Nothing when it would be too long.
std::optional<std::string> WithHitsReplaced(std::string_view text, const Words& words, const std::vector<Hit>& hits,
                                            std::size_t wordsPerHit, const std::string& replacement) {
    std::string replaced;
    std::size_t position = 0;
    std::size_t nextFreeWord = 0;
    for (const Hit& hit : hits) {
        if (hit.start < nextFreeWord) continue;
        nextFreeWord = hit.start + wordsPerHit;
        replaced += text.substr(position, words.spans[hit.start].begin - position);
        replaced += replacement;
        position = words.spans[nextFreeWord - 1].end;
        if (replaced.size() > longestText) return std::nullopt;
    }
    replaced += text.substr(position);
    return replaced;
}

}  // namespace

TextNormalization::TextNormalization(TextRules wordRules, std::vector<Row> tableRows, bool repeatsUntilSettled)
    : rules(std::move(wordRules)), rows(std::move(tableRows)), isRecursive(repeatsUntilSettled) {}

std::optional<std::string> TextNormalization::Apply(std::string text, WorkBudget& budget) const {
    if (!isRecursive) return ApplyOnce(std::move(text), budget);
    for (int round = 0; round < mostRounds; ++round) {
        auto normalized = ApplyOnce(text, budget);
        if (!normalized || *normalized == text) return normalized;
        text = std::move(*normalized);
    }
    return std::nullopt;
}

std::optional<std::string> TextNormalization::ApplyOnce(std::string text, WorkBudget& budget) const {
    // Split only when a row looks for words, and again only when a row has changed the text.
    std::optional<SearchedText> words;
    for (const Row& row : rows) {
        if (!budget.Spend(stepsPerRow)) return std::nullopt;
        std::optional<std::string> replaced;
        if (row.expression) {
            replaced = row.expression->ReplacedAll(text, row.replacement, budget);
        } else {
            if (!words) words = SearchedText::In(text, rules, budget);
            if (!words) return std::nullopt;
            const auto hits = FindTerm(*words, row.words, rules.maxDistance, budget);
            if (!hits) return std::nullopt;
            if (hits->empty()) continue;
            replaced = WithHitsReplaced(text, words->GetWords(), *hits, row.words.size(), row.text);
        }
        if (!replaced || replaced->size() > longestText) return std::nullopt;
        if (*replaced == text) continue;
        text = std::move(*replaced);
        words.reset();
    }
    return text;
}

}  // namespace nbscore
