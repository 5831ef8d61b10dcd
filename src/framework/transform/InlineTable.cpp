#include "framework/transform/InlineTable.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "framework/BaseTranslator.h"
#include "framework/SeededHash.h"
#include "framework/transform/ElementReading.h"
#include "framework/xml/PmmlPrefix.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

std::string LocalNameOf(const DOMElement* element) {
    return Utf8Of(WithoutPrefix(element->getNodeName()));
}

/// Columns by name. Several may be asked for under one name: each gets the cell.
class Columns {
public:
    explicit Columns(const std::vector<std::string>& names) : count(names.size()) {
        for (std::size_t i = 0; i < names.size(); ++i)
            positions[std::string(WithoutPrefix(std::string_view(names[i])))].push_back(i);
    }

    InlineRow Read(const DOMElement* rowElement) const {
        InlineRow row{rowElement, std::vector<const DOMElement*>(count, nullptr)};
        for (const DOMElement* cell : ChildrenOf(rowElement)) {
            const auto found = positions.find(LocalNameOf(cell));
            if (found == positions.end()) continue;
            RefuseElementsIn(cell);
            for (const std::size_t position : found->second)
                Put(cell, row.cells[position]);
        }
        return row;
    }

private:
    static void RefuseElementsIn(const DOMElement* cell) {
        if (const DOMElement* inner = BaseTranslator::GetFirstChildElt(cell)) {
            throw UnexpectedChild(inner, "the cell " + TagOf(cell));
        }
    }
    static void Put(const DOMElement* cell, const DOMElement*& place) {
        if (place != nullptr) {
            throw RefusalAt(cell, VeskException::InconsistentDocument, "The row has two cells " + TagOf(cell) + ".");
        }
        place = cell;
    }

    std::size_t count;
    SeededMap<std::string, std::vector<std::size_t>> positions;
};

}  // namespace

void ForEachRow(const DOMElement* table, const std::vector<std::string>& columns,
                const std::function<void(const InlineRow& row)>& onRow) {
    const Columns askedColumns(columns);
    for (const DOMElement* child : ChildrenOf(table)) {
        if (LocalNameOf(child) != "row") throw UnexpectedChild(child, TagOf(table));
        onRow(askedColumns.Read(child));
    }
}

const DOMElement* TableAmong(const std::vector<const DOMElement*>& children, const DOMElement* element) {
    for (const DOMElement* child : children) {
        if (BaseTranslator::IsEqual(child->getNodeName(), "InlineTable")) return child;
        if (BaseTranslator::IsEqual(child->getNodeName(), "TableLocator")) {
            throw RefusalAt(child, VeskException::UnsupportedExpression, "<TableLocator> is not supported.");
        }
    }
    throw RefusalAt(element, VeskException::UnexpectedElement, TagOf(element) + " has no <InlineTable>.");
}

}  // namespace nbscore
