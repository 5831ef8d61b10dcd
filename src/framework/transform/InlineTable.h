#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <string>
#include <vector>

#include "framework/XmlFwd.h"

namespace nbscore {

/// Part of one row of an InlineTable element: the cells of the columns that somebody asks for.
struct InlineRow {
    const xercesc::DOMElement* element;
    /// By asked column; null where the row has no such cell.
    std::vector<const xercesc::DOMElement*> cells;
};

/// The rows of an InlineTable, in order. A cell is an element with the name of its column, with or without a namespace
/// prefix before either; cells of other columns are passed over. Takes time proportional to the table.
///
/// Throws VeskException 1 for a child that is no row and for an element inside a cell that was asked for, 12 for a row
/// with two cells of one asked column.
std::vector<InlineRow> ReadInlineTable(const xercesc::DOMElement* table, const std::vector<std::string>& columns);

/// The one table of an element: its InlineTable. Throws VeskException 11 for a TableLocator, 1 for no table.
/// @param children the element's, without Extension elements.
const xercesc::DOMElement* TableAmong(const std::vector<const xercesc::DOMElement*>& children,
                                      const xercesc::DOMElement* element);

}  // namespace nbscore
