#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/ProductLoops.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                      // must stand before highway.h
#include <hwy/highway.h>

#include "batch/FactorTable.h"
#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Cases side by side: a table of few rows lies in registers, and a look-up is a permutation. Two vectors of cases at a
/// time, so that one's multiplications fill the other's waiting time.
template <std::size_t categories>
void MultiplyInRegisters(const ProductTask& task, const std::uint8_t* const* rows) {
    const hn::ScalableTag<double> numbers;
    const hn::RebindToSigned<decltype(numbers)> words;
    const hn::Rebind<std::int32_t, decltype(numbers)> halves;
    const hn::Rebind<std::uint8_t, decltype(numbers)> bytes;
    constexpr std::size_t lanes = 8;
    using Vector = hn::Vec<decltype(numbers)>;

    const auto lastOfFirstHalf = hn::Set(words, lanes - 1);
    for (std::size_t i = 0; i < task.cases; i += 2 * lanes) {
        Vector first[categories];
        Vector second[categories];
        for (std::size_t k = 0; k < categories; ++k)
            first[k] = second[k] = hn::Set(numbers, task.priors[k]);
        for (std::size_t j = 0; j < task.predictors; ++j) {
            const auto rowsOf = [&](std::size_t at) {
                return hn::PromoteTo(words, hn::PromoteTo(halves, hn::LoadU(bytes, rows[j] + at)));
            };
            const auto rowsOfFirst = rowsOf(i);
            const auto rowsOfSecond = rowsOf(i + lanes);
            const auto firstInUpper = hn::RebindMask(numbers, hn::Gt(rowsOfFirst, lastOfFirstHalf));
            const auto secondInUpper = hn::RebindMask(numbers, hn::Gt(rowsOfSecond, lastOfFirstHalf));
            const auto firstPlaces = hn::IndicesFromVec(numbers, hn::And(rowsOfFirst, lastOfFirstHalf));
            const auto secondPlaces = hn::IndicesFromVec(numbers, hn::And(rowsOfSecond, lastOfFirstHalf));
            for (std::size_t k = 0; k < categories; ++k) {
                const double* const table = task.tablesByCategory[j] + k * FactorTable::maxPlaneRows;
                const auto lower = hn::Load(numbers, table);
                const auto upper = hn::Load(numbers, table + lanes);
                first[k] = hn::Mul(first[k], hn::IfThenElse(firstInUpper, hn::TableLookupLanes(upper, firstPlaces),
                                                            hn::TableLookupLanes(lower, firstPlaces)));
                second[k] = hn::Mul(second[k], hn::IfThenElse(secondInUpper, hn::TableLookupLanes(upper, secondPlaces),
                                                              hn::TableLookupLanes(lower, secondPlaces)));
            }
        }
        for (std::size_t k = 0; k < categories; ++k) {
            hn::Store(first[k], numbers, task.joints + k * task.pitch + i);
            hn::Store(second[k], numbers, task.joints + k * task.pitch + i + lanes);
        }
    }
}

bool TryInRegisters(const ProductTask& task, const std::uint8_t* const* rows) {
#if HWY_TARGET <= HWY_AVX3
    switch (task.categories) {
        case 2:
            MultiplyInRegisters<2>(task, rows);
            return true;
        case 3:
            MultiplyInRegisters<3>(task, rows);
            return true;
        case 4:
            MultiplyInRegisters<4>(task, rows);
            return true;
        default:
            return false;
    }
#else
    static_cast<void>(task);
    static_cast<void>(rows);
    return false;
#endif
}

/// Target categories side by side, as a row of a table holds them: `vectors` vectors of a row, for several cases at a
/// time, so that one's multiplications fill the others' waiting time.
/// @param column the first of these categories.
template <std::size_t lanes, std::size_t vectors, std::size_t casesAtOnce, typename Row>
void MultiplyColumns(const ProductTask& task, const Row* const* rows, std::size_t firstCase, std::size_t column) {
    const hn::CappedTag<double, lanes> numbers;
    using Vector = hn::Vec<decltype(numbers)>;
    const std::size_t width = hn::Lanes(numbers);
    const std::size_t stride = FactorTable::GetStride(task.categories);

    for (std::size_t c = 0; c < ProductTask::caseMultiple; c += casesAtOnce) {
        Vector products[casesAtOnce][vectors];
        for (std::size_t v = 0; v < vectors; ++v) {
            for (std::size_t n = 0; n < casesAtOnce; ++n)
                products[n][v] = hn::Load(numbers, task.priors + column + v * width);
        }
        for (std::size_t j = 0; j < task.predictors; ++j) {
            const double* const table = task.tablesByRow[j] + column;
            const Row* const rowOf = rows[j] + firstCase + c;
            for (std::size_t n = 0; n < casesAtOnce; ++n) {
                const double* const row = table + static_cast<std::size_t>(rowOf[n]) * stride;
                for (std::size_t v = 0; v < vectors; ++v)
                    products[n][v] = hn::Mul(products[n][v], hn::Load(numbers, row + v * width));
            }
        }
        for (std::size_t n = 0; n < casesAtOnce; ++n) {
            for (std::size_t v = 0; v < vectors; ++v)
                hn::Store(products[n][v], numbers, task.scratch + (c + n) * stride + column + v * width);
        }
    }
}

/// Rows of more than one vector, as many vectors at a time as registers can hold the products of.
template <typename Row>
void MultiplyWideRows(const ProductTask& task, const Row* const* rows, std::size_t firstCase) {
    constexpr std::size_t lanes = 8;
    const std::size_t width = hn::Lanes(hn::CappedTag<double, lanes>());
    const std::size_t stride = FactorTable::GetStride(task.categories);
    std::size_t column = 0;
    for (; column + 4 * width <= stride; column += 4 * width)
        MultiplyColumns<lanes, 4, 4>(task, rows, firstCase, column);
    switch ((stride - column) / width) {
        case 3:
            return MultiplyColumns<lanes, 3, 4>(task, rows, firstCase, column);
        case 2:
            return MultiplyColumns<lanes, 2, 4>(task, rows, firstCase, column);
        case 1:
            return MultiplyColumns<lanes, 1, 8>(task, rows, firstCase, column);
        default:
            return;
    }
}

/// A row of two or four categories is a vector by itself, or a few where vectors are short.
template <std::size_t stride, typename Row>
void MultiplyNarrowRows(const ProductTask& task, const Row* const* rows, std::size_t firstCase) {
    constexpr std::size_t vectors = stride / HWY_MIN(stride, HWY_LANES(double));
    MultiplyColumns<stride, vectors, 8>(task, rows, firstCase, 0);
}

void ScatterToCategories(const ProductTask& task, std::size_t firstCase) {
    const std::size_t stride = FactorTable::GetStride(task.categories);
    for (std::size_t k = 0; k < task.categories; ++k) {
        double* const joints = task.joints + k * task.pitch + firstCase;
        for (std::size_t c = 0; c < ProductTask::caseMultiple; ++c)
            joints[c] = task.scratch[c * stride + k];
    }
}

template <typename Row>
void MultiplyByRow(const ProductTask& task, const Row* const* rows) {
    const std::size_t stride = FactorTable::GetStride(task.categories);
    for (std::size_t i = 0; i < task.cases; i += ProductTask::caseMultiple) {
        if (stride == 2) {
            MultiplyNarrowRows<2>(task, rows, i);
        } else if (stride == 4) {
            MultiplyNarrowRows<4>(task, rows, i);
        } else {
            MultiplyWideRows(task, rows, i);
        }
        ScatterToCategories(task, i);
    }
}

void MultiplyByByteRows(const ProductTask& task, const std::uint8_t* const* rows) {
    MultiplyByRow(task, rows);
}

void MultiplyByWordRows(const ProductTask& task, const FactorRow* const* rows) {
    MultiplyByRow(task, rows);
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(TryInRegisters);
HWY_EXPORT(MultiplyByByteRows);
HWY_EXPORT(MultiplyByWordRows);

namespace {

bool AllFitRegisters(const ProductTask& task) {
    for (std::size_t j = 0; j < task.predictors; ++j) {
        if (task.tablesByCategory[j] == nullptr) return false;
    }
    return true;
}

}  // namespace

void MultiplyFactors(const ProductTask& task, const std::uint8_t* const* rows) {
    if (AllFitRegisters(task) && HWY_DYNAMIC_DISPATCH(TryInRegisters)(task, rows)) return;
    HWY_DYNAMIC_DISPATCH(MultiplyByByteRows)(task, rows);
}

void MultiplyFactors(const ProductTask& task, const FactorRow* const* rows) {
    HWY_DYNAMIC_DISPATCH(MultiplyByWordRows)(task, rows);
}

}  // namespace nbscore
#endif
