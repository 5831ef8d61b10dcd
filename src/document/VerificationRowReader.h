#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "document/VerificationSuite.h"
#include "framework/SeededHash.h"
#include "framework/XmlFwd.h"
#include "framework/xml/PlacesInOrder.h"

namespace nbscore {

/// Reads the rows of test cases: each child of a row is the cell of the column that its name, prefix aside, is. Only
/// cells that are not blank are kept, so that memory is bounded by the document's size however many fields there are.
class VerificationRowReader {
public:
    /// @param fieldsByColumn borrowed.
    explicit VerificationRowReader(const SeededMap<std::string, std::size_t>& fieldsByColumn)
        : columns(fieldsByColumn), lastRowOfField(fieldsByColumn.size(), 0) {}

    /// Throws VeskException 5 for a cell that holds elements and for text between cells, 12 for a second cell of a
    /// column in one row.
    VerificationRow Read(const xercesc::DOMElement& rowElement, PlacesInOrder::LineAndColumn place);

    /// The names of cells, met so far, that are no field's column.
    std::vector<UnusedColumn> TakeUnusedColumns() { return std::move(unused); }

private:
    void ReadCell(const xercesc::DOMElement& cell, VerificationRow& row);

    const SeededMap<std::string, std::size_t>& columns;
    std::vector<UnusedColumn> unused;
    SeededSet<std::string> unusedNames;
    /// The number, from 1, of the last row that had a cell of each field.
    std::vector<std::size_t> lastRowOfField;
    std::size_t rowNumber = 0;
};

}  // namespace nbscore
