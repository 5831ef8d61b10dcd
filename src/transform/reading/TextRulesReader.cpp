#include "transform/reading/TextRulesReader.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

std::size_t ReadDistance(Element element, std::string_view text) {
    const int distance = IntAt(element, text);
    if (distance >= 0) return static_cast<std::size_t>(distance);
    throw RefusalAt(element, VeskException::InvalidContent, "maxLevenshteinDistance is below zero.");
}

std::shared_ptr<const WordSplitter> ReadSplitter(Element element, std::string_view text, FieldScope& scope) {
    auto separator = scope.GetPatterns().Compile(TextAt(element, text, scope.GetTranscoder()), element);
    if (separator->IsUsable()) return std::make_shared<const WordSplitter>(std::move(separator));
    throw RefusalAt(element, VeskException::InvalidContent,
                    "The regular expression \"" + ExcerptOf(text) + "\" cannot be used: " + separator->Fault() + ".");
}

}  // namespace

TextRules ReadTextRules(Element element, const TextRules& defaults, FieldScope& scope) {
    TextRules rules = defaults;
    rules.isCaseSensitive = FlagAttribute(element, Name::isCaseSensitive).value_or(defaults.isCaseSensitive);
    rules.isTokenized = FlagAttribute(element, Name::tokenize).value_or(defaults.isTokenized);
    if (const auto distance = element.GetAttribute(Name::maxLevenshteinDistance)) {
        rules.maxDistance = ReadDistance(element, *distance);
    }
    if (const auto separator = element.GetAttribute(Name::wordSeparatorCharacterRE)) {
        rules.splitter = ReadSplitter(element, *separator, scope);
    }
    if (rules.isTokenized || rules.maxDistance == 0) return rules;
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "maxLevenshteinDistance is not supported with tokenize=\"false\".");
}

}  // namespace nbscore
