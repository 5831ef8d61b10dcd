#include "framework/transform/MapValuesReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/SeededHash.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/FieldInput.h"
#include "framework/transform/InlineTable.h"
#include "framework/transform/MapValuesExpression.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

constexpr XmlName outputColumnName = "outputColumn";
constexpr XmlName columnName = "column";

class Reader {
public:
    Reader(const DOMElement* mapValues, FieldScope& fieldScope)
        : element(mapValues), scope(fieldScope), kind(DataTypeOf(mapValues)) {}

    std::unique_ptr<const Expression> Read() {
        constexpr XmlName mapMissingToName = "mapMissingTo";
        constexpr XmlName defaultValueName = "defaultValue";
        const XMLCh* outputColumn = BaseTranslator::GetAttributeForced(element, outputColumnName);
        const auto children = ChildrenOf(element);
        ReadPairs(children);
        const DOMElement* table = TableAmong(children, element);
        RefuseOthers(children, table);
        columns.push_back(Utf8Of(outputColumn));
        ReadRows(table);
        const Transcoder& transcoder = scope.GetTranscoder();
        return std::make_unique<MapValuesExpression>(
            std::move(keys), std::move(results),
            MapValuesExpression::Outcomes{WrittenAttribute(element, mapMissingToName, kind, transcoder),
                                          WrittenAttribute(element, defaultValueName, kind, transcoder)});
    }

private:
    static bool IsPair(const DOMElement* child) {
        return BaseTranslator::IsEqual(child->getNodeName(), "FieldColumnPair");
    }

    void ReadPairs(const std::vector<const DOMElement*>& children) {
        SeededSet<std::string> names;
        for (const DOMElement* child : children) {
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

    void ReadPair(const DOMElement* pair) {
        keys.push_back({ReadFieldReference(pair, scope)});
        columns.push_back(Utf8Of(BaseTranslator::GetAttributeForced(pair, columnName)));
        pairs.push_back(pair);
    }

    void RefuseOthers(const std::vector<const DOMElement*>& children, const DOMElement* table) const {
        const auto other = std::ranges::find_if(
            children, [table](const DOMElement* child) { return child != table && !IsPair(child); });
        if (other != children.end()) throw UnexpectedChild(*other, TagOf(element));
    }

    void ReadRows(const DOMElement* table) {
        bool hasOutput = false;
        ForEachRow(table, columns, [&](const InlineRow& row) {
            const DOMElement* output = row.cells.back();
            hasOutput = hasOutput || output != nullptr;
            if (results.try_emplace(KeyOf(row), ResultOf(output)).second) return;
            throw RefusalAt(row.element, VeskException::InconsistentDocument,
                            "An earlier row has the same keys as this one.");
        });
        if (hasOutput || results.empty()) return;
        throw RefusalAt(element, VeskException::InvalidContent,
                        "No row has a cell for the output column \"" +
                            ExcerptOf(BaseTranslator::GetAttribute(element, outputColumnName)) + "\".");
    }

    std::string KeyOf(const InlineRow& row) {
        TableKey key;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (row.cells[i] == nullptr) {
                throw RefusalAt(row.element, VeskException::InvalidContent,
                                "The row has no cell for the column " + QuotedColumn(pairs[i]) + ".");
            }
            const std::string cell = TextAt(row.cells[i], TextIn(row.cells[i]).c_str(), scope.GetTranscoder());
            keys[i].NoteCell(cell);
            key.Add(cell, keys[i]);
        }
        return key.GetText();
    }

    /// A row without an output cell says that the result is missing.
    ExpressionValue ResultOf(const DOMElement* output) const {
        return output ? WrittenValue(output, TextIn(output).c_str(), kind, scope.GetTranscoder()) : ExpressionValue();
    }

    static std::string QuotedColumn(const DOMElement* pair) {
        return "\"" + ExcerptOf(BaseTranslator::GetAttribute(pair, columnName)) + "\"";
    }

    const DOMElement* element;
    FieldScope& scope;
    ValueKind kind;
    std::vector<const DOMElement*> pairs;
    std::vector<KeyColumn> keys;
    /// Of the keys; behind them, in the end, the output column.
    std::vector<std::string> columns;
    MapValuesExpression::Rows results;
};

}  // namespace

std::unique_ptr<const Expression> ReadMapValues(const DOMElement* element, FieldScope& scope) {
    return Reader(element, scope).Read();
}

}  // namespace nbscore
