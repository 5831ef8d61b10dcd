#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pmml/DocumentTree.h"

namespace nbscore {

/// Part of one row of an InlineTable element: the cells of the requested columns.
struct InlineRow {
    Element element;
    /// By requested column; a null element where the row has no such cell.
    std::vector<Element> cells;
};

/// Calls a function for each row of an InlineTable, in order. Not for all at once: when rows lack most cells, they
/// would take far more memory than the table has cells. A cell is an element with the name of its column; namespace
/// prefixes of either are ignored, and so are cells of other columns.
///
/// Throws VeskException 1 for a child that is no row and for an element inside a requested cell, 12 for a row with two
/// cells of one requested column.
void ForEachRow(Element table, const std::vector<std::string>& columns,
                const std::function<void(const InlineRow& row)>& onRow);

/// The InlineTable of an element. Throws VeskException 11 for a TableLocator, 1 for no table.
/// @param children the element's, without Extension elements.
Element TableAmong(const std::vector<Element>& children, Element element);

}  // namespace nbscore
