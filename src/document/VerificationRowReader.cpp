#include "document/VerificationRowReader.h"
#include "framework/xml/PmmlPrefix.h"

#include <xercesc/dom/DOMElement.hpp>

#include "document/ElementSteps.h"
#include "framework/Blanks.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace nbscore {
namespace {

bool IsText(const DOMNode& node) {
    return node.getNodeType() == DOMNode::TEXT_NODE || node.getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

/// All text of a cell, comments left out.
std::string TextOf(const DOMElement& cell) {
    std::string text;
    for (const DOMNode* node = cell.getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        if (IsText(*node)) {
            text += Utf8Of(node->getNodeValue());
        } else if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            throw RefusalAt(node, VeskException::InvalidContent, "A cell of a test case holds text and no elements.");
        }
    }
    return text;
}

}  // namespace

VerificationRow VerificationRowReader::Read(const DOMElement& rowElement, PlacesInOrder::LineAndColumn place) {
    VerificationRow row;
    row.line = place.line;
    row.column = place.column;
    ++rowNumber;
    for (const DOMNode* node = rowElement.getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            ReadCell(static_cast<const DOMElement&>(*node), row);
        } else if (IsText(*node) && !WithoutBlanks(Utf8Of(node->getNodeValue())).empty()) {
            throw RefusalAt(&rowElement, VeskException::InvalidContent,
                            "A row of test cases holds cells and no text between them.");
        }
    }
    return row;
}

void VerificationRowReader::ReadCell(const DOMElement& cell, VerificationRow& row) {
    std::string name = Utf8Of(WithoutPrefix(cell.getNodeName()));
    const auto column = columns.find(name);
    if (column == columns.end()) {
        if (unusedNames.insert(name).second) unused.push_back({std::move(name), row.line, row.column});
        return;
    }
    if (std::exchange(lastRowOfField[column->second], rowNumber) == rowNumber) {
        throw RefusalAt(&cell, VeskException::InconsistentDocument,
                        "The row has two cells of the column \"" + name + "\".");
    }
    std::string text = TextOf(cell);
    if (!WithoutBlanks(text).empty()) row.cells.push_back({column->second, std::move(text)});
}

}  // namespace nbscore
