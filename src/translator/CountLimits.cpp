#include "translator/CountLimits.h"

#include "pmml/DocumentMemory.h"
#include "pmml/Refusal.h"

namespace nbscore {

void RequireIndexInRange(Element element, int index, const std::string& what) {
    if (index <= highestCountIndex) return;
    throw RefusalAt(element, VeskException::InconsistentDocument,
                    what + " " + std::to_string(index) + " is above " + std::to_string(highestCountIndex) + ".");
}

void CountCells::Take(Element element, std::size_t cells) {
    if (cells > left) {
        VeskException refusal = RefusalForMemoryLimit("The document's count tables and categories need", total);
        refusal.SetPlace(element.GetPlace());
        throw refusal;
    }
    left -= cells;
}

void TableCells::Require(Element element, std::size_t rows, std::size_t counts) {
    const std::size_t cells = rows * CountCells::cellsPerRow + counts;
    if (cells <= taken) return;
    all.Take(element, cells - taken);
    taken = cells;
}

}  // namespace nbscore
