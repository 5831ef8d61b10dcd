#include "transform/reading/ExpressionReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/FieldScope.h"
#include "transform/reading/InlineTable.h"
#include "transform/text/TextIndexExpression.h"

namespace nbscore {
namespace {

std::size_t ReadDistance(Element element, std::string_view text) {
    const int distance = IntAt(element, text);
    if (distance >= 0) return static_cast<std::size_t>(distance);
    throw RefusalAt(element, Refusal::DistanceNegative);
}

std::shared_ptr<const WordSplitter> ReadSplitter(Element element, std::string_view text, FieldScope& scope) {
    auto separator = scope.GetPatterns().Compile(TextAt(element, text, scope.GetTranscoder()), element);
    if (separator->IsUsable()) return std::make_shared<const WordSplitter>(std::move(separator));
    throw RefusalAt(element, Refusal::RegularExpressionUnusable, {ExcerptOf(text), separator->Fault()});
}

/// The attributes by which TextIndex and TextIndexNormalization say how terms are looked for. Where one is absent the
/// default stands.
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
    throw RefusalAt(element, Refusal::WordsNeeded, {"maxLevenshteinDistance"});
}

enum Column { In, Out, IsRegularExpression };

/// Reads a TextIndexNormalization element, whose defaults are the rules of its TextIndex.
class NormalizationReader {
public:
    NormalizationReader(Element normalization, const TextRules& inherited, FieldScope& documentScope)
        : element(normalization), rules(ReadTextRules(normalization, inherited, documentScope)), scope(documentScope) {}

    TextNormalization Read() {
        columns = {std::string(element.GetAttributeOr(Name::inField, "string")),
                   std::string(element.GetAttributeOr(Name::outField, "stem")),
                   std::string(element.GetAttributeOr(Name::regexField, "regex"))};
        const auto children = ChildrenOf(element);
        Element table = TableAmong(children, element);
        for (const Element child : children)
            if (child != table) throw UnexpectedChild(child, element.GetTag());
        std::vector<TextNormalization::Row> rows;
        ForEachRow(table, columns, [&](const InlineRow& row) { rows.push_back(ReadRow(row)); });
        return {rules, std::move(rows), FlagAttribute(element, Name::recursive).value_or(false)};
    }

private:
    TextNormalization::Row ReadRow(const InlineRow& row) {
        const std::string sought = CellText(row, In);
        std::string replacement = CellText(row, Out);
        if (ReadIsExpression(row)) return ExpressionRow(row, sought, replacement);
        // Without words, an expression that matches exactly the text does the same.
        if (!rules.isTokenized) {
            return ExpressionRow(row, RegularExpression::Quoted(sought), Replacement::Quoted(replacement));
        }
        WorkBudget budget(WorkBudget::ofCase);
        auto words = Words::In(sought, rules, budget);
        if (!words || words->words.empty()) throw NothingToLookFor(row);
        return {nullptr, std::move(words->words), std::move(replacement), Replacement("")};
    }

    TextNormalization::Row ExpressionRow(const InlineRow& row, const std::string& pattern,
                                         const std::string& replacement) {
        if (pattern.empty()) throw NothingToLookFor(row);
        auto expression =
            scope.GetPatterns().Compile(rules.isCaseSensitive ? pattern : "(?i)" + pattern, row.cells[In]);
        if (!expression->IsUsable()) throw Unusable(row, expression->Fault());
        Replacement text(replacement);
        if (!expression->HasGroup(text.GreatestGroup())) {
            throw Unusable(row, "it has no group " + std::to_string(text.GreatestGroup()));
        }
        return {std::move(expression), {}, {}, std::move(text)};
    }

    static bool ReadIsExpression(const InlineRow& row) {
        Element cell = row.cells[IsRegularExpression];
        if (!cell) return false;
        const std::string word = cell.GetTextInside();
        return !word.empty() && TruthAt(cell, word);
    }

    std::string CellText(const InlineRow& row, Column column) const {
        if (Element cell = row.cells[column]) return TextAt(cell, cell.GetTextInside(), scope.GetTranscoder());
        throw RefusalAt(row.element, Refusal::CellMissing, {columns[column]});
    }

    static VeskException NothingToLookFor(const InlineRow& row) {
        return RefusalAt(row.cells[In], Refusal::NothingToLookFor);
    }

    static VeskException Unusable(const InlineRow& row, const std::string& reason) {
        return RefusalAt(row.cells[In], Refusal::RegularExpressionUnusable,
                         {ExcerptOf(row.cells[In].GetTextInside()), reason});
    }

    Element element;
    TextRules rules;
    FieldScope& scope;
    std::vector<std::string> columns;
};

using Weight = TextIndexExpression::Weight;

/// How many plain expressions cost as much as one index.
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
        throw RefusalAt(element, Refusal::WordsNeeded, {"augmentedNormalizedTermFrequency"});
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
            parts.normalizations.push_back(NormalizationReader(child, parts.rules, scope).Read());
        } else if (parts.term) {
            throw UnexpectedChild(child, "<TextIndex> behind its term");
        } else {
            parts.term = ReadExpression(child, scope);
        }
    }
    if (!parts.term) throw RefusalAt(element, Refusal::TermMissing);
    scope.GetCost().evaluations += evaluationsPerIndex;
    return std::make_unique<TextIndexExpression>(std::move(parts));
}

}  // namespace nbscore
