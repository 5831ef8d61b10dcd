#include "translator/CountLimits.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/xml/MemoryRefusal.h"
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
        VeskException refusal = RefusalForMemoryLimit("The document's count tables and categories need", total);
        refusal.SetPlace(PlaceOf(&element));
        throw refusal;
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
