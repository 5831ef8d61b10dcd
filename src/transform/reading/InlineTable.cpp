#include "transform/reading/InlineTable.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

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
    /// The names must outlive the columns.
    explicit Columns(const std::vector<std::string>& names) {
        sorted.reserve(names.size());
        for (const std::string& name : names)
            sorted.push_back({WithoutPrefix(name), sorted.size()});
        std::ranges::stable_sort(sorted, {}, &Column::name);
    }

    void Read(Element rowElement, InlineRow& row) const {
        row.element = rowElement;
        row.cells.assign(sorted.size(), Element());
        for (const Element cell : rowElement.GetChildren()) {
            if (cell.Is(Name::Extension)) continue;
            const std::string_view name = LocalNameOf(cell);
            auto column = std::ranges::lower_bound(sorted, name, {}, &Column::name);
            if (column == sorted.end() || column->name != name) continue;
            RefuseElementsIn(cell);
            for (; column != sorted.end() && column->name == name; ++column)
                Put(cell, row.cells[column->position]);
        }
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

    struct Column {
        std::string_view name;
        std::size_t position;
    };

    std::vector<Column> sorted;
};

}  // namespace

void ForEachRow(Element table, const std::vector<std::string>& columns,
                const std::function<void(const InlineRow& row)>& onRow) {
    const Columns requested(columns);
    InlineRow row;
    for (const Element child : ChildrenOf(table)) {
        if (LocalNameOf(child) != "row") throw UnexpectedChild(child, table.GetTag());
        requested.Read(child, row);
        onRow(row);
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
