#include "framework/transform/text/TextRulesReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/transform/ElementReading.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

std::size_t ReadDistance(const DOMElement* element, const XMLCh* text) {
    const int distance = IntAt(element, text);
    if (distance >= 0) return static_cast<std::size_t>(distance);
    throw RefusalAt(element, VeskException::InvalidContent, "maxLevenshteinDistance is below zero.");
}

std::shared_ptr<const WordSplitter> ReadSplitter(const DOMElement* element, const XMLCh* text, FieldScope& scope) {
    auto separator = scope.GetPatterns().Compile(TextAt(element, text, scope.GetTranscoder()), element);
    if (separator->IsUsable()) return std::make_shared<const WordSplitter>(std::move(separator));
    throw RefusalAt(element, VeskException::InvalidContent,
                    "The regular expression \"" + ExcerptOf(text) + "\" cannot be used: " + separator->Fault() + ".");
}

}  // namespace

TextRules ReadTextRules(const DOMElement* element, const TextRules& defaults, FieldScope& scope) {
    constexpr XmlName caseName = "isCaseSensitive";
    constexpr XmlName distanceName = "maxLevenshteinDistance";
    constexpr XmlName separatorName = "wordSeparatorCharacterRE";
    constexpr XmlName tokenizeName = "tokenize";
    TextRules rules = defaults;
    rules.isCaseSensitive = FlagAttribute(element, caseName).value_or(defaults.isCaseSensitive);
    rules.isTokenized = FlagAttribute(element, tokenizeName).value_or(defaults.isTokenized);
    if (const XMLCh* distance = BaseTranslator::GetAttribute(element, distanceName)) {
        rules.maxDistance = ReadDistance(element, distance);
    }
    if (const XMLCh* separator = BaseTranslator::GetAttribute(element, separatorName)) {
        rules.splitter = ReadSplitter(element, separator, scope);
    }
    if (rules.isTokenized || rules.maxDistance == 0) return rules;
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "maxLevenshteinDistance is not supported with tokenize=\"false\".");
}

}  // namespace nbscore
