#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/InlineTable.h"

namespace nbscore {
namespace {

/// A column of a table in which the values of a field are looked up.
///
/// Numbers are equal however they are written, truth values too, be it as words or as 1 and 0; texts are equal byte by
/// byte. Where the kind of the field is not known (Any), what reads as a number is one, and a truth value is looked up
/// by its word when a cell of the column is that word, else as the number 1 or 0.
struct KeyColumn {
    FieldReference field;
    bool hasTrue = false;
    bool hasFalse = false;

    /// To be called for every cell, before a value is looked up.
    void NoteCell(const std::string& cell);
};

/// The key of a table row or of a case: a text made of its parts, so that keys are equal exactly when their parts are.
class TableKey {
public:
    /// @param part a cell of the column, or a value that is looked up in it.
    void Add(const ExpressionValue& part, const KeyColumn& column);
    const std::string& GetText() const { return text; }

private:
    std::string text;
};

/// Zero and negative zero are one number.
std::string TextOfNumber(double number) {
    return number == 0.0 ? "0" : FormatNumber(number);
}

std::string TextOfTruth(bool truth, const KeyColumn& column) {
    const bool isWord = truth ? column.hasTrue : column.hasFalse;
    return isWord ? TextOf(truth) : TextOfNumber(truth ? 1.0 : 0.0);
}

/// The same text for all values that are equal.
std::string CanonicalText(const ExpressionValue& part, const KeyColumn& column) {
    switch (column.field.kind) {
        case ValueKind::Text:
            break;
        case ValueKind::Truth:
            if (const auto truth = TruthOf(part)) return TextOf(*truth);
            break;
        case ValueKind::Number:
        case ValueKind::Any:
            if (const auto* truth = std::get_if<bool>(&part)) return TextOfTruth(*truth, column);
            if (const auto number = NumberOf(part)) return TextOfNumber(*number);
            break;
    }
    return TextOf(part);
}

void KeyColumn::NoteCell(const std::string& cell) {
    hasTrue = hasTrue || cell == "true";
    hasFalse = hasFalse || cell == "false";
}

void TableKey::Add(const ExpressionValue& part, const KeyColumn& column) {
    const std::string canonical = CanonicalText(part, column);
    // With the length, "a" + "bc" differs from "ab" + "c".
    text += std::to_string(canonical.size());
    text += ':';
    text += canonical;
}

/// `MapValues`: a cell of the table row whose key columns hold the values of certain fields.
class MapValuesExpression : public Expression {
public:
    using Rows = SeededMap<std::string, ExpressionValue>;

    struct Outcomes {
        /// When any of the fields is missing.
        ExpressionValue whenMissing;
        /// When no row matches.
        ExpressionValue otherwise;
    };

    /// @param resultsByKey by keys whose parts are in the order of the columns.
    MapValuesExpression(std::vector<KeyColumn> keyColumns, Rows resultsByKey, Outcomes outcomesWithoutRow);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<KeyColumn> keys;
    Rows rows;
    Outcomes outcomes;
};

MapValuesExpression::MapValuesExpression(std::vector<KeyColumn> keyColumns, Rows resultsByKey,
                                         Outcomes outcomesWithoutRow)
    : keys(std::move(keyColumns)), rows(std::move(resultsByKey)), outcomes(std::move(outcomesWithoutRow)) {}

ExpressionValue MapValuesExpression::ValueFor(const FieldValues& fields) const {
    TableKey key;
    for (const KeyColumn& column : keys) {
        const ExpressionValue part = fields.Get(column.field);
        if (IsMissing(part)) return CopyOf(outcomes.whenMissing);
        key.Add(part, column);
    }
    const auto found = rows.find(key.GetText());
    return CopyOf(found == rows.end() ? outcomes.otherwise : found->second);
}

class Reader {
public:
    Reader(Element mapValues, FieldScope& fieldScope)
        : element(mapValues), scope(fieldScope), kind(DataTypeOf(mapValues)) {}

    std::unique_ptr<const Expression> Read() {
        const auto outputColumn = RequiredAttribute(element, Name::outputColumn);
        const auto children = ChildrenOf(element);
        ReadPairs(children);
        Element table = TableAmong(children, element);
        RefuseOthers(children, table);
        columns.emplace_back(outputColumn);
        ReadRows(table);
        const Transcoder& transcoder = scope.GetTranscoder();
        return std::make_unique<MapValuesExpression>(
            std::move(keys), std::move(results),
            MapValuesExpression::Outcomes{WrittenAttribute(element, Name::mapMissingTo, kind, transcoder),
                                          WrittenAttribute(element, Name::defaultValue, kind, transcoder)});
    }

private:
    static bool IsPair(Element child) { return child.Is(Name::FieldColumnPair); }

    void ReadPairs(const std::vector<Element>& children) {
        SeededSet<std::string> names;
        for (const Element child : children) {
            if (!IsPair(child)) continue;
            ReadPair(child);
            if (!names.insert(columns.back()).second) {
                throw RefusalAt(child, Refusal::ColumnTwice, {QuotableColumn(child)});
            }
        }
        if (!keys.empty()) return;
        throw RefusalAt(element, Refusal::PartMissing, {element.GetTag(), SpellingOf(Name::FieldColumnPair)});
    }

    void ReadPair(Element pair) {
        keys.push_back({ReadFieldReference(pair, scope)});
        columns.emplace_back(RequiredAttribute(pair, Name::column));
        pairs.push_back(pair);
    }

    void RefuseOthers(const std::vector<Element>& children, Element table) const {
        const auto other =
            std::ranges::find_if(children, [table](Element child) { return child != table && !IsPair(child); });
        if (other != children.end()) throw UnexpectedChild(*other, element.GetTag());
    }

    void ReadRows(Element table) {
        bool hasOutput = false;
        ForEachRow(table, columns, [&](const InlineRow& row) {
            Element output = row.cells.back();
            hasOutput = hasOutput || output;
            if (results.try_emplace(KeyOf(row), ResultOf(output)).second) return;
            throw RefusalAt(row.element, Refusal::KeysTwice);
        });
        if (hasOutput || results.empty()) return;
        throw RefusalAt(element, Refusal::OutputColumnMissing,
                        {ExcerptOf(RequiredAttribute(element, Name::outputColumn))});
    }

    std::string KeyOf(const InlineRow& row) {
        TableKey key;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (!row.cells[i]) {
                throw RefusalAt(row.element, Refusal::CellMissing, {QuotableColumn(pairs[i])});
            }
            const std::string cell = TextAt(row.cells[i], row.cells[i].GetTextInside(), scope.GetTranscoder());
            keys[i].NoteCell(cell);
            key.Add(cell, keys[i]);
        }
        return key.GetText();
    }

    /// Missing for a row without an output cell.
    ExpressionValue ResultOf(Element output) const {
        return output ? WrittenValue(output, output.GetTextInside(), kind, scope.GetTranscoder()) : ExpressionValue();
    }

    static std::string QuotableColumn(Element pair) { return ExcerptOf(RequiredAttribute(pair, Name::column)); }

    Element element;
    FieldScope& scope;
    ValueKind kind;
    std::vector<Element> pairs;
    std::vector<KeyColumn> keys;
    /// Those of the keys, then the output column.
    std::vector<std::string> columns;
    MapValuesExpression::Rows results;
};

}  // namespace

std::unique_ptr<const Expression> ReadMapValues(Element element, FieldScope& scope) {
    return Reader(element, scope).Read();
}

}  // namespace nbscore
