#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "batch/AlignedNumbers.h"
#include "batch/FactorRow.h"

namespace nbscore {

/// What one predictor multiplies into the joint probabilities: for each row a factor for each target category. New rows
/// are ones. Laid out for the loops that read it.
class FactorTable {
public:
    /// How many rows a table may have to be looked up within registers.
    static constexpr std::size_t maxPlaneRows = 16;

    FactorTable(std::size_t rows, std::size_t categories)
        : numRows(rows),
          numCategories(categories),
          byRow(rows * GetStride(categories), 1.0),
          byCategory(rows > maxPlaneRows ? AlignedNumbers() : AlignedNumbers(maxPlaneRows * categories, 1.0)) {}

    /// @param factors one for each category, or more, which are not looked at.
    void SetRow(FactorRow row, std::span<const double> factors) {
        std::ranges::copy(factors.first(numCategories), byRow.Get() + row * GetStride(numCategories));
        if (byCategory.GetSize() == 0) return;
        for (std::size_t k = 0; k < numCategories; ++k)
            byCategory.Get()[k * maxPlaneRows + row] = factors[k];
    }

    std::size_t GetNumRows() const { return numRows; }
    /// Row by row, each GetStride(categories) long, filled up with ones.
    const double* GetRows() const { return byRow.Get(); }
    /// Category by category, each maxPlaneRows long; null when there are more rows than that.
    const double* GetPlanes() const { return byCategory.Get(); }

    /// How far rows lie apart, so that each can be loaded as whole vectors.
    static std::size_t GetStride(std::size_t categories) {
        if (categories <= 2) return 2;
        if (categories <= 4) return 4;
        return (categories + 7) / 8 * 8;
    }

private:
    std::size_t numRows;
    std::size_t numCategories;
    AlignedNumbers byRow;
    AlignedNumbers byCategory;
};

}  // namespace nbscore
