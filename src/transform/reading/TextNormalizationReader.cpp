#include "transform/reading/TextNormalizationReader.h"

#include <re2/re2.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/InlineTable.h"
#include "transform/reading/TextRulesReader.h"
#include "transform/text/TermSearch.h"

namespace nbscore {
namespace {

enum Column { In, Out, IsRegularExpression };

class Reader {
public:
    Reader(Element normalization, const TextRules& inherited, FieldScope& documentScope)
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
        // Without words, the expression that matches nothing but the text does the same.
        if (!rules.isTokenized) return ExpressionRow(row, RE2::QuoteMeta(sought), Escaped(replacement));
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

    /// So that it stands for itself as a replacement.
    static std::string Escaped(const std::string& text) {
        std::string escaped;
        for (const char character : text) {
            if (character == '$' || character == '\\') escaped += '\\';
            escaped += character;
        }
        return escaped;
    }

    static bool ReadIsExpression(const InlineRow& row) {
        Element cell = row.cells[IsRegularExpression];
        if (!cell) return false;
        const std::string word = cell.GetTextInside();
        if (word == "true" || word == "1") return true;
        if (word.empty() || word == "false" || word == "0") return false;
        throw RefusalAt(cell, VeskException::InvalidContent,
                        "\"" + ExcerptOf(word) + "\" is no truth value: true, false, 1 or 0.");
    }

    std::string CellText(const InlineRow& row, Column column) const {
        if (Element cell = row.cells[column]) return TextAt(cell, cell.GetTextInside(), scope.GetTranscoder());
        throw RefusalAt(row.element, VeskException::InvalidContent,
                        "The row has no cell for the column \"" + columns[column] + "\".");
    }

    static VeskException NothingToLookFor(const InlineRow& row) {
        return RefusalAt(row.cells[In], VeskException::InvalidContent, "The row has nothing to look for.");
    }

    static VeskException Unusable(const InlineRow& row, const std::string& reason) {
        return RefusalAt(row.cells[In], VeskException::InvalidContent,
                         "The regular expression \"" + ExcerptOf(row.cells[In].GetTextInside()) +
                             "\" cannot be used: " + reason + ".");
    }

    Element element;
    TextRules rules;
    FieldScope& scope;
    std::vector<std::string> columns;
};

}  // namespace

TextNormalization ReadTextNormalization(Element element, const TextRules& inherited, FieldScope& scope) {
    return Reader(element, inherited, scope).Read();
}

}  // namespace nbscore
