#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/RowLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                 // must stand before highway.h
#include <hwy/highway.h>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// `vectors` vectors of the rows of several cases, so that one's multiplications fill the others' waiting time.
/// @param column the first of the categories in these vectors.
template <std::size_t lanes, std::size_t vectors, std::size_t casesAtOnce>
void MultiplyColumns(const ProductTask& task, std::size_t column) {
    const hn::CappedTag<double, lanes> numbers;
    using Vector = hn::Vec<decltype(numbers)>;
    const std::size_t width = hn::Lanes(numbers);
    const std::size_t stride = RowStride(task.categories);

    for (std::size_t i = 0; i < task.cases; i += casesAtOnce) {
        Vector products[casesAtOnce][vectors];
        const auto forEachFactor = [&](const FactorStep& step, const auto& use) {
            const auto useRows = [&](const auto* rows) {
                for (std::size_t n = 0; n < casesAtOnce; ++n) {
                    const double* const row = step.table + static_cast<std::size_t>(rows[n]) * stride + column;
                    for (std::size_t v = 0; v < vectors; ++v)
                        use(products[n][v], hn::Load(numbers, row + v * width));
                }
            };
            const std::size_t begin = step.list * task.rowPitch + task.first + i;
            if (step.numRows <= longestByteList) {
                useRows(task.narrowRows + begin);
            } else {
                useRows(task.wideRows + begin);
            }
        };
        forEachFactor(task.steps.front(), [](Vector& product, Vector factor) { product = factor; });
        for (std::size_t s = 1; s < task.steps.size(); ++s)
            forEachFactor(task.steps[s], [](Vector& product, Vector factor) { product = hn::Mul(product, factor); });
        for (std::size_t n = 0; n < casesAtOnce; ++n) {
            for (std::size_t v = 0; v < vectors; ++v)
                hn::Store(products[n][v], numbers, task.joints + (i + n) * task.pitch + column + v * width);
        }
    }
}

/// Rows of more than one vector, as many vectors at a time as registers can hold the products of.
void MultiplyWideRows(const ProductTask& task) {
    constexpr std::size_t lanes = 8;
    const std::size_t width = hn::Lanes(hn::CappedTag<double, lanes>());
    const std::size_t stride = RowStride(task.categories);
    std::size_t column = 0;
    for (; column + 4 * width <= stride; column += 4 * width)
        MultiplyColumns<lanes, 4, 4>(task, column);
    switch ((stride - column) / width) {
        case 3:
            return MultiplyColumns<lanes, 3, 4>(task, column);
        case 2:
            return MultiplyColumns<lanes, 2, 4>(task, column);
        case 1:
            return MultiplyColumns<lanes, 1, 8>(task, column);
        default:
            return;
    }
}

/// A row of two or four categories is a vector by itself, or a few where vectors are short.
template <std::size_t stride>
void MultiplyNarrowRows(const ProductTask& task) {
    MultiplyColumns<stride, stride / HWY_MIN(stride, HWY_LANES(double)), 8>(task, 0);
}

void MultiplyRowsOfAnyWidth(const ProductTask& task) {
    switch (RowStride(task.categories)) {
        case 2:
            return MultiplyNarrowRows<2>(task);
        case 4:
            return MultiplyNarrowRows<4>(task);
        default:
            return MultiplyWideRows(task);
    }
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(MultiplyRowsOfAnyWidth);

void MultiplyRows(const ProductTask& task) {
    HWY_DYNAMIC_DISPATCH(MultiplyRowsOfAnyWidth)(task);
}

}  // namespace nbscore
#endif
