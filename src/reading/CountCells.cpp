#include "reading/CountCells.h"

#include "pmml/Refusal.h"

namespace nbscore {

void CountCells::Take(Element element, std::size_t cells) {
    if (cells > left) throw RefusalAt(element, Refusal::TablesOverMemoryLimit, {std::to_string(total)});
    left -= cells;
}

void TableCells::Require(Element element, std::size_t rows, std::size_t counts) {
    const std::size_t cells = rows * CountCells::cellsPerRow + counts;
    if (cells <= taken) return;
    all.Take(element, cells - taken);
    taken = cells;
}

}  // namespace nbscore
