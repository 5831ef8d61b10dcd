#include "framework/transform/TextIndexReader.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "framework/document/Refusal.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ExpressionReader.h"
#include "framework/transform/TextIndexExpression.h"
#include "framework/transform/text/TextNormalizationReader.h"
#include "framework/transform/text/TextRulesReader.h"

namespace nbscore {
namespace {

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
