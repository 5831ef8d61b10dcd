#include "transform/text/TextIndexExpression.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

/// A table that never settles is stopped after so many rounds.
constexpr int mostRounds = 100;

/// What a row takes at least, however short the text is.
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

std::size_t CountHits(const std::vector<Hit>& hits, bool bestOnly) {
    if (!bestOnly || hits.empty()) return hits.size();
    const std::size_t best = std::ranges::min(hits, {}, &Hit::distance).distance;
    return static_cast<std::size_t>(
        std::ranges::count_if(hits, [best](const Hit& hit) { return hit.distance == best; }));
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
    // Made only when a row looks for words, and again only when a row has changed the text.
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

ExpressionValue TextIndexExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue text = fields.Get(parts.textField);
    if (IsMissing(text)) return {};
    const ExpressionValue term = parts.term->Evaluate(fields);
    if (IsMissing(term)) return {};
    const auto count = CountIn(TextOf(text), TextOf(term), fields.Budget());
    return count ? ExpressionValue(Weigh(*count)) : ExpressionValue();
}

std::optional<TextIndexExpression::Count> TextIndexExpression::CountIn(std::string text, const std::string& term,
                                                                       WorkBudget& budget) const {
    if (text.size() > longestText || term.size() > longestText) return std::nullopt;
    for (const TextNormalization& normalization : parts.normalizations) {
        auto normalized = normalization.Apply(std::move(text), budget);
        if (!normalized) return std::nullopt;
        text = std::move(*normalized);
    }
    if (parts.rules.isTokenized) return CountWords(text, term, budget);
    if (parts.rules.isCaseSensitive) return Count{CountInside(text, term), 0};
    return Count{CountInside(LowerCaseOf(text), LowerCaseOf(term)), 0};
}

std::optional<TextIndexExpression::Count> TextIndexExpression::CountWords(const std::string& text,
                                                                          const std::string& term,
                                                                          WorkBudget& budget) const {
    const auto words = SearchedText::In(text, parts.rules, budget);
    const auto sought = Words::In(term, parts.rules, budget);
    if (!words || !sought) return std::nullopt;
    const auto hits = FindTerm(*words, sought->words, parts.rules.maxDistance, budget);
    if (!hits) return std::nullopt;
    const bool needsHighest = parts.weight == Weight::AugmentedNormalizedTermFrequency;
    return Count{CountHits(*hits, parts.countsBestHitsOnly), needsHighest ? HighestFrequency(*words) : 0};
}

double TextIndexExpression::Weigh(const Count& count) const {
    const auto hits = static_cast<double>(count.hits);
    switch (parts.weight) {
        case Weight::TermFrequency:
            break;
        case Weight::Binary:
            return hits > 0 ? 1 : 0;
        case Weight::Logarithmic:
            return std::log10(1 + hits);
        case Weight::AugmentedNormalizedTermFrequency:
            return hits > 0 ? 0.5 * (1 + hits / static_cast<double>(count.highestFrequency)) : 0;
    }
    return hits;
}

}  // namespace nbscore
