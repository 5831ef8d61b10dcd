#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/FieldReference.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/functions/CodePoints.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/FieldScope.h"
#include "transform/reading/TextNormalizationReader.h"
#include "transform/reading/TextRulesReader.h"
#include "transform/text/TermSearch.h"
#include "transform/text/TextNormalization.h"
#include "transform/text/TextRules.h"

namespace nbscore {
namespace {

/// `TextIndex`: how often a term stands in a text.
class TextIndexExpression : public Expression {
public:
    enum class Weight { TermFrequency, Binary, Logarithmic, AugmentedNormalizedTermFrequency };

    struct Parts {
        FieldReference textField;
        std::unique_ptr<const Expression> term;
        TextRules rules;
        Weight weight;
        /// Only the hits that come closest to the term count.
        bool countsBestHitsOnly;
        /// What happens to the text before, in order.
        std::vector<TextNormalization> normalizations;
    };

    explicit TextIndexExpression(Parts readParts);

private:
    /// Missing when the text or the term is, and when finding out would take more work than the field has left.
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    struct Count {
        std::size_t hits;
        /// Of the most frequent word; counted only for the weight that needs it.
        std::size_t highestFrequency;
    };

    std::optional<Count> CountIn(std::string text, const std::string& term, WorkBudget& budget) const;
    std::optional<Count> CountWords(const std::string& text, const std::string& term, WorkBudget& budget) const;
    double Weigh(const Count& count) const;

    Parts parts;
};

std::size_t CountHits(const std::vector<Hit>& hits, bool bestOnly) {
    if (!bestOnly || hits.empty()) return hits.size();
    const std::size_t best = std::ranges::min(hits, {}, &Hit::distance).distance;
    return static_cast<std::size_t>(
        std::ranges::count_if(hits, [best](const Hit& hit) { return hit.distance == best; }));
}

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

using Weight = TextIndexExpression::Weight;

/// How many plain expressions one index costs as much as.
constexpr std::uint64_t evaluationsPerIndex = 1000;

Weight ReadWeight(Element element) {
    static constexpr std::string_view words[] = {"termFrequency", "binary", "logarithmic",
                                                 "augmentedNormalizedTermFrequency"};
    static constexpr Weight meanings[] = {Weight::TermFrequency, Weight::Binary, Weight::Logarithmic,
                                          Weight::AugmentedNormalizedTermFrequency};
    return meanings[WordAttribute(element, Name::localTermWeights, words)];
}

bool ReadCountsBestHitsOnly(Element element) {
    static constexpr std::string_view words[] = {"allHits", "bestHits"};
    return WordAttribute(element, Name::countHits, words) == 1;
}

TextRules ReadRules(Element element, Weight weight, FieldScope& scope) {
    TextRules defaults;
    defaults.splitter = std::make_shared<const WordSplitter>(scope.GetPatterns().Compile("\\s+", element));
    TextRules rules = ReadTextRules(element, defaults, scope);
    if (!rules.isTokenized && weight == Weight::AugmentedNormalizedTermFrequency) {
        throw RefusalAt(element, VeskException::UnsupportedExpression,
                        "augmentedNormalizedTermFrequency is not supported with tokenize=\"false\".");
    }
    return rules;
}

}  // namespace

std::unique_ptr<const Expression> ReadTextIndex(Element element, FieldScope& scope) {
    const FieldReference field = scope.Resolve(element, RequiredAttribute(element, Name::textField));
    const Weight weight = ReadWeight(element);
    TextIndexExpression::Parts parts{
        field, nullptr, ReadRules(element, weight, scope), weight, ReadCountsBestHitsOnly(element), {}};
    for (const Element child : ChildrenOf(element)) {
        if (child.Is(Name::TextIndexNormalization)) {
            parts.normalizations.push_back(ReadTextNormalization(child, parts.rules, scope));
        } else if (parts.term) {
            throw UnexpectedChild(child, "<TextIndex> behind its term");
        } else {
            parts.term = ReadExpression(child, scope);
        }
    }
    if (!parts.term) throw RefusalAt(element, VeskException::UnexpectedElement, "<TextIndex> has no term.");
    scope.GetCost().evaluations += evaluationsPerIndex;
    return std::make_unique<TextIndexExpression>(std::move(parts));
}

}  // namespace nbscore
