#include "framework/transform/TextIndexReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <cstdint>
#include <string_view>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ExpressionReader.h"
#include "framework/transform/TextIndexExpression.h"
#include "framework/transform/text/TextNormalizationReader.h"
#include "framework/transform/text/TextRulesReader.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using Weight = TextIndexExpression::Weight;

/// How many plain expressions one index costs as much as.
constexpr std::uint64_t evaluationsPerIndex = 1000;

Weight ReadWeight(const DOMElement* element) {
    constexpr XmlName weightsName = "localTermWeights";
    static constexpr std::string_view words[] = {"termFrequency", "binary", "logarithmic",
                                                 "augmentedNormalizedTermFrequency"};
    static constexpr Weight meanings[] = {Weight::TermFrequency, Weight::Binary, Weight::Logarithmic,
                                          Weight::AugmentedNormalizedTermFrequency};
    return meanings[WordAttribute(element, weightsName, words)];
}

bool ReadCountsBestHitsOnly(const DOMElement* element) {
    constexpr XmlName countHitsName = "countHits";
    static constexpr std::string_view words[] = {"allHits", "bestHits"};
    return WordAttribute(element, countHitsName, words) == 1;
}

TextRules ReadRules(const DOMElement* element, Weight weight, FieldScope& scope) {
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

std::unique_ptr<const Expression> ReadTextIndex(const DOMElement* element, FieldScope& scope) {
    constexpr XmlName textFieldName = "textField";
    const FieldReference field = scope.Resolve(element, BaseTranslator::GetAttributeForced(element, textFieldName));
    const Weight weight = ReadWeight(element);
    TextIndexExpression::Parts parts{
        field, nullptr, ReadRules(element, weight, scope), weight, ReadCountsBestHitsOnly(element), {}};
    for (const DOMElement* child : ChildrenOf(element)) {
        if (BaseTranslator::IsEqual(child->getNodeName(), "TextIndexNormalization")) {
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
