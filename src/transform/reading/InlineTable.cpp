#include "transform/reading/InlineTable.h"

#include <cstddef>
#include <string_view>

#include "framework/SeededHash.h"
#include "pmml/Names.h"
#include "pmml/Refusal.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

std::string_view LocalNameOf(Element element) {
    return WithoutPrefix(element.GetSpelling());
}

/// Columns by name. Several may be requested by one name: each gets the cell.
class Columns {
public:
    explicit Columns(const std::vector<std::string>& names) : count(names.size()) {
        for (std::size_t i = 0; i < names.size(); ++i)
            positions[std::string(WithoutPrefix(names[i]))].push_back(i);
    }

    InlineRow Read(Element rowElement) const {
        InlineRow row{rowElement, std::vector<Element>(count)};
        for (const Element cell : ChildrenOf(rowElement)) {
            const auto found = positions.find(LocalNameOf(cell));
            if (found == positions.end()) continue;
            RefuseElementsIn(cell);
            for (const std::size_t position : found->second)
                Put(cell, row.cells[position]);
        }
        return row;
    }

private:
    static void RefuseElementsIn(Element cell) {
        if (const Element inner = cell.GetFirstChild()) {
            throw UnexpectedChild(inner, "the cell " + cell.GetTag());
        }
    }
    static void Put(Element cell, Element& place) {
        if (place) {
            throw RefusalAt(cell, Refusal::CellTwice, {cell.GetTag()});
        }
        place = cell;
    }

    std::size_t count;
    SeededMap<std::string, std::vector<std::size_t>> positions;
};

}  // namespace

void ForEachRow(Element table, const std::vector<std::string>& columns,
                const std::function<void(const InlineRow& row)>& onRow) {
    const Columns requested(columns);
    for (const Element child : ChildrenOf(table)) {
        if (LocalNameOf(child) != "row") throw UnexpectedChild(child, table.GetTag());
        onRow(requested.Read(child));
    }
}

Element TableAmong(const std::vector<Element>& children, Element element) {
    for (const Element child : children) {
        if (child.Is(Name::InlineTable)) return child;
        if (child.Is(Name::TableLocator)) {
            throw RefusalAt(child, Refusal::TableNotInline);
        }
    }
    throw RefusalAt(element, Refusal::PartMissing, {element.GetTag(), SpellingOf(Name::InlineTable)});
}

}  // namespace nbscore
