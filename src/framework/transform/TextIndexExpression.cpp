#include "framework/transform/TextIndexExpression.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/transform/ValueReading.h"
#include "framework/transform/functions/CodePoints.h"
#include "framework/transform/text/TermSearch.h"

namespace nbscore {
namespace {

std::size_t CountHits(const std::vector<Hit>& hits, bool bestOnly) {
    if (!bestOnly || hits.empty()) return hits.size();
    const std::size_t best = std::ranges::min(hits, {}, &Hit::distance).distance;
    return static_cast<std::size_t>(
        std::ranges::count_if(hits, [best](const Hit& hit) { return hit.distance == best; }));
}

}  // namespace

TextIndexExpression::TextIndexExpression(Parts readParts) : parts(std::move(readParts)) {}

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
