#include "translator/CountLimits.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/xml/Refusal.h"

using xercesc::DOMElement;

namespace nbscore {

void RequireIndexInRange(const DOMElement& element, int index, const std::string& what) {
    if (index <= highestCountIndex) return;
    throw RefusalAt(&element, VeskException::InconsistentDocument,
                    what + " " + std::to_string(index) + " is above " + std::to_string(highestCountIndex) + ".");
}

void CountCells::Take(const DOMElement& element, std::size_t cells) {
    if (cells > left) {
        throw RefusalAt(
            &element, VeskException::InconsistentDocument,
            "The document's count tables and categories need more than " + std::to_string(total) + " cells of memory.");
    }
    left -= cells;
}

void TableCells::Require(const DOMElement& element, std::size_t rows, std::size_t counts) {
    const std::size_t cells = rows * CountCells::cellsPerRow + counts;
    if (cells <= taken) return;
    all.Take(element, cells - taken);
    taken = cells;
}

}  // namespace nbscore
