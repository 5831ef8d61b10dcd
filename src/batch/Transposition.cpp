#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/Transposition.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                       // must stand before highway.h
#include <hwy/highway.h>

#include <algorithm>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR

/// A square in registers: halves, quarters and single numbers of rows change places.
template <std::size_t size>
inline void TransposeSquare(const double* from, std::size_t fromPitch, double* to, std::size_t toPitch) {
    const hn::CappedTag<double, size> numbers;
    using Vector = hn::Vec<decltype(numbers)>;
    Vector rows[size];
    for (std::size_t r = 0; r < size; ++r)
        rows[r] = hn::LoadU(numbers, from + r * fromPitch);
    if constexpr (size == 8) {
        for (std::size_t r = 0; r < 4; ++r) {
            const Vector upper = rows[r];
            const Vector lower = rows[r + 4];
            rows[r] = hn::ConcatLowerLower(numbers, lower, upper);
            rows[r + 4] = hn::ConcatUpperUpper(numbers, lower, upper);
        }
    }
    if constexpr (size >= 4) {
        for (std::size_t part = 0; part < size; part += 4) {
            for (std::size_t r = part; r < part + 2; ++r) {
                const Vector upper = rows[r];
                const Vector lower = rows[r + 2];
                rows[r] = hn::OddEvenBlocks(hn::SwapAdjacentBlocks(lower), upper);
                rows[r + 2] = hn::OddEvenBlocks(lower, hn::SwapAdjacentBlocks(upper));
            }
        }
    }
    for (std::size_t r = 0; r < size; r += 2) {
        hn::StoreU(hn::InterleaveLower(numbers, rows[r], rows[r + 1]), numbers, to + r * toPitch);
        hn::StoreU(hn::InterleaveUpper(numbers, rows[r], rows[r + 1]), numbers, to + (r + 1) * toPitch);
    }
}

/// In squares; the last ones reach back over their neighbours where sizes do not divide.
template <std::size_t size>
void TransposeInSquares(const double* from, std::size_t fromPitch, std::size_t rows, std::size_t columns, double* to,
                        std::size_t toPitch) {
    for (std::size_t r = 0; r < rows; r += size) {
        const std::size_t row = std::min(r, rows - size);
        for (std::size_t c = 0; c < columns; c += size) {
            const std::size_t column = std::min(c, columns - size);
            TransposeSquare<size>(from + row * fromPitch + column, fromPitch, to + column * toPitch + row, toPitch);
        }
    }
}

#endif

void TransposeAny(const double* from, std::size_t fromPitch, std::size_t rows, std::size_t columns, double* to,
                  std::size_t toPitch) {
#if HWY_TARGET != HWY_SCALAR
    const std::size_t shorter = std::min(rows, columns);
    constexpr std::size_t widest = HWY_MIN(HWY_LANES(double), 8);
    if constexpr (widest >= 8) {
        if (shorter >= 8) return TransposeInSquares<8>(from, fromPitch, rows, columns, to, toPitch);
    }
    if constexpr (widest >= 4) {
        if (shorter >= 4) return TransposeInSquares<4>(from, fromPitch, rows, columns, to, toPitch);
    }
    if (shorter >= 2) return TransposeInSquares<2>(from, fromPitch, rows, columns, to, toPitch);
#endif
    for (std::size_t r = 0; r < rows; ++r) {
        for (std::size_t c = 0; c < columns; ++c)
            to[c * toPitch + r] = from[r * fromPitch + c];
    }
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(TransposeAny);

void Transpose(const double* from, std::size_t fromPitch, std::size_t rows, std::size_t columns, double* to,
               std::size_t toPitch) {
    HWY_DYNAMIC_DISPATCH(TransposeAny)(from, fromPitch, rows, columns, to, toPitch);
}

}  // namespace nbscore
#endif
