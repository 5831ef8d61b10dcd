#include "batch/FactorTable.h"

#include <algorithm>

namespace nbscore {
namespace {

AlignedNumbers MakePlanes(std::size_t rows, std::size_t categories) {
    return rows > FactorTable::maxPlaneRows ? AlignedNumbers()
                                            : AlignedNumbers(FactorTable::maxPlaneRows * categories, 1.0);
}

}  // namespace

FactorTable::FactorTable(std::size_t rows, std::size_t categories)
    : numRows(rows),
      numCategories(categories),
      byRow(rows * GetStride(categories), 1.0),
      byCategory(MakePlanes(rows, categories)) {}

void FactorTable::SetRow(RowNumber row, std::span<const double> factors) {
    std::ranges::copy(factors.first(numCategories), byRow.Get() + row * GetStride(numCategories));
    if (byCategory.GetSize() == 0) return;
    for (std::size_t k = 0; k < numCategories; ++k)
        byCategory.Get()[k * maxPlaneRows + row] = factors[k];
}

std::size_t FactorTable::GetStride(std::size_t categories) {
    if (categories <= 2) return 2;
    if (categories <= 4) return 4;
    return (categories + 7) / 8 * 8;
}

}  // namespace nbscore
