#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pmml/DocumentTree.h"

namespace nbscore {

/// Part of one row of an InlineTable element: the cells of the columns that somebody asks for.
struct InlineRow {
    Element element;
    /// By asked column; none where the row has no such cell.
    std::vector<Element> cells;
};

/// Hands the rows of an InlineTable on, in order, one after the other: all at once they could take room for far more
/// cells than the table has. A cell is an element with the name of its column, with or without a namespace prefix
/// before either; cells of other columns are passed over.
///
/// Throws VeskException 1 for a child that is no row and for an element inside a cell that was asked for, 12 for a row
/// with two cells of one asked column.
void ForEachRow(Element table, const std::vector<std::string>& columns,
                const std::function<void(const InlineRow& row)>& onRow);

/// The one table of an element: its InlineTable. Throws VeskException 11 for a TableLocator, 1 for no table.
/// @param children the element's, without Extension elements.
Element TableAmong(const std::vector<Element>& children, Element element);

}  // namespace nbscore
