#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/FieldInput.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/FieldScope.h"
#include "transform/reading/InlineTable.h"
#include "transform/reading/TableKey.h"

namespace nbscore {
namespace {

/// `MapValues`: the row of a table in which certain columns hold what certain fields hold.
class MapValuesExpression : public Expression {
public:
    using Rows = SeededMap<std::string, ExpressionValue>;

    struct Outcomes {
        /// When any of the fields is missing.
        ExpressionValue whenMissing;
        /// When no row fits.
        ExpressionValue otherwise;
    };

    /// @param resultsByKey keys made of parts in the order of the columns.
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
                throw RefusalAt(child, VeskException::InconsistentDocument,
                                "The column " + QuotedColumn(child) + " is paired twice.");
            }
        }
        if (!keys.empty()) return;
        throw RefusalAt(element, VeskException::UnexpectedElement, "<MapValues> has no <FieldColumnPair>.");
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
            throw RefusalAt(row.element, VeskException::InconsistentDocument,
                            "An earlier row has the same keys as this one.");
        });
        if (hasOutput || results.empty()) return;
        throw RefusalAt(element, VeskException::InvalidContent,
                        "No row has a cell for the output column \"" +
                            ExcerptOf(element.GetAttributeOr(Name::outputColumn, {})) + "\".");
    }

    std::string KeyOf(const InlineRow& row) {
        TableKey key;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (!row.cells[i]) {
                throw RefusalAt(row.element, VeskException::InvalidContent,
                                "The row has no cell for the column " + QuotedColumn(pairs[i]) + ".");
            }
            const std::string cell = TextAt(row.cells[i], row.cells[i].GetTextInside(), scope.GetTranscoder());
            keys[i].NoteCell(cell);
            key.Add(cell, keys[i]);
        }
        return key.GetText();
    }

    /// A row without an output cell says that the result is missing.
    ExpressionValue ResultOf(Element output) const {
        return output ? WrittenValue(output, output.GetTextInside(), kind, scope.GetTranscoder()) : ExpressionValue();
    }

    static std::string QuotedColumn(Element pair) {
        return "\"" + ExcerptOf(pair.GetAttributeOr(Name::column, {})) + "\"";
    }

    Element element;
    FieldScope& scope;
    ValueKind kind;
    std::vector<Element> pairs;
    std::vector<KeyColumn> keys;
    /// Of the keys; behind them, in the end, the output column.
    std::vector<std::string> columns;
    MapValuesExpression::Rows results;
};

}  // namespace

std::unique_ptr<const Expression> ReadMapValues(Element element, FieldScope& scope) {
    return Reader(element, scope).Read();
}

}  // namespace nbscore
