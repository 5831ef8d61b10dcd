#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/RegisterLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                      // must stand before highway.h
#include <hwy/highway.h>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET <= HWY_AVX3

using Numbers = hn::CappedTag<double, 8>;
using Vector = hn::Vec<Numbers>;
using Words = hn::RebindToSigned<Numbers>;

constexpr std::size_t lanes = 8;
/// Of cases at a time, so that one's multiplications fill the other's waiting time.
constexpr std::size_t vectors = caseMultiple / lanes;
constexpr std::size_t categoriesAtOnce = 4;

/// Of eight numbers, those that the lowest three bits of each row name.
HWY_INLINE Vector LookUpInOne(const double* table, hn::Vec<Words> rows) {
    return Vector{_mm512_permutexvar_pd(rows.raw, hn::Load(Numbers(), table).raw)};
}

/// Of sixteen numbers, those that the lowest four bits of each row name.
HWY_INLINE Vector LookUpInTwo(const double* table, hn::Vec<Words> rows) {
    const Numbers numbers;
    return Vector{_mm512_permutex2var_pd(hn::Load(numbers, table).raw, rows.raw, hn::Load(numbers, table + lanes).raw)};
}

HWY_INLINE hn::Vec<Words> LoadRows(const std::uint8_t* rows) {
    const Words words;
    const hn::Rebind<std::int32_t, Words> halves;
    const hn::Rebind<std::uint8_t, Words> bytes;
    return hn::PromoteTo(words, hn::PromoteTo(halves, hn::LoadU(bytes, rows)));
}

/// The factors of eight cases, whose rows of two numbers each are loaded from memory.
/// @param use takes a category and the factors.
template <std::size_t categories, typename Row, typename Use>
HWY_INLINE void LoadPairs(const double* table, const Row* rows, const Use& use) {
    const Numbers numbers;
    const hn::CappedTag<double, 4> fours;
    const hn::CappedTag<double, 2> pairs;
    const auto rowOf = [&](std::size_t n) { return hn::Load(pairs, table + 2 * static_cast<std::size_t>(rows[n])); };
    const auto everySecond = [&](std::size_t n) {
        return hn::Combine(numbers, hn::Combine(fours, rowOf(n + 6), rowOf(n + 4)),
                           hn::Combine(fours, rowOf(n + 2), rowOf(n)));
    };
    const Vector even = everySecond(0);
    const Vector odd = everySecond(1);
    use(0, hn::InterleaveLower(numbers, even, odd));
    if constexpr (categories > 1) use(1, hn::InterleaveUpper(numbers, even, odd));
}

/// The same of rows of four numbers.
template <std::size_t categories, typename Row, typename Use>
HWY_INLINE void LoadFours(const double* table, const Row* rows, const Use& use) {
    const Numbers numbers;
    const hn::CappedTag<double, 4> fours;
    const auto rowOf = [&](std::size_t n) { return hn::Load(fours, table + 4 * static_cast<std::size_t>(rows[n])); };
    const auto rowsOf = [&](std::size_t n) { return hn::Combine(numbers, rowOf(n + 4), rowOf(n)); };
    const Vector first = rowsOf(0);
    const Vector second = rowsOf(1);
    const Vector third = rowsOf(2);
    const Vector fourth = rowsOf(3);
    const auto useBoth = [&](std::size_t category, Vector lower, Vector upper) {
        use(category, hn::OddEvenBlocks(hn::SwapAdjacentBlocks(upper), lower));
        if (category + 2 < categories) use(category + 2, hn::OddEvenBlocks(upper, hn::SwapAdjacentBlocks(lower)));
    };
    useBoth(0, hn::InterleaveLower(numbers, first, second), hn::InterleaveLower(numbers, third, fourth));
    if constexpr (categories > 1) {
        useBoth(1, hn::InterleaveUpper(numbers, first, second), hn::InterleaveUpper(numbers, third, fourth));
    }
}

/// Hands the factors of a step to `use`, which takes a vector of cases, a category and the factors.
/// @tparam part RowPart of all categories.
/// @param category the first of those that are looked up.
template <std::size_t categories, std::size_t part, typename Use>
HWY_INLINE void LookUp(const ProductTask& task, const FactorStep& step, std::size_t firstCase, std::size_t category,
                       const Use& use) {
    const Numbers numbers;
    if (step.numRows <= rowsInRegisters[2]) {
        const std::uint8_t* const rows = task.narrowRows + step.list * task.rowPitch + firstCase;
        hn::Vec<Words> places[vectors];
        for (std::size_t v = 0; v < vectors; ++v)
            places[v] = LoadRows(rows + v * lanes);
        if (step.numRows <= rowsInRegisters[0]) {
            for (std::size_t k = 0; k < categories; ++k) {
                for (std::size_t v = 0; v < vectors; ++v)
                    use(v, k, LookUpInOne(step.table + (category + k) * rowsInRegisters[0], places[v]));
            }
        } else if (step.numRows <= rowsInRegisters[1]) {
            for (std::size_t k = 0; k < categories; ++k) {
                for (std::size_t v = 0; v < vectors; ++v)
                    use(v, k, LookUpInTwo(step.table + (category + k) * rowsInRegisters[1], places[v]));
            }
        } else {
            for (std::size_t v = 0; v < vectors; ++v) {
                const auto isUpper =
                    hn::RebindMask(numbers, hn::TestBit(places[v], hn::Set(Words(), std::int64_t{16})));
                for (std::size_t k = 0; k < categories; ++k) {
                    const double* const table = step.table + (category + k) * rowsInRegisters[2];
                    use(v, k,
                        hn::IfThenElse(isUpper, LookUpInTwo(table + 16, places[v]), LookUpInTwo(table, places[v])));
                }
            }
        }
        return;
    }
    const double* const table = step.table + category * step.numRows;
    const auto load = [&](const auto* rows) {
        for (std::size_t v = 0; v < vectors; ++v) {
            const auto useInVector = [&](std::size_t k, Vector factors) { use(v, k, factors); };
            if constexpr (part == 2) {
                LoadPairs<categories>(table, rows + v * lanes, useInVector);
            } else {
                LoadFours<categories>(table, rows + v * lanes, useInVector);
            }
        }
    };
    if (step.numRows <= longestByteList) {
        load(task.narrowRows + step.list * task.rowPitch + firstCase);
    } else {
        load(task.wideRows + step.list * task.rowPitch + firstCase);
    }
}

/// So many categories for all cases: the part of the tables that is read stays in the cache.
template <std::size_t categories, std::size_t part>
void MultiplyCategories(const ProductTask& task, std::size_t category) {
    const Numbers numbers;
    for (std::size_t i = 0; i < task.cases; i += caseMultiple) {
        Vector products[vectors][categories];
        LookUp<categories, part>(task, task.steps.front(), task.first + i, category,
                                 [&](std::size_t v, std::size_t k, Vector factors) { products[v][k] = factors; });
        for (std::size_t s = 1; s < task.steps.size(); ++s) {
            LookUp<categories, part>(task, task.steps[s], task.first + i, category,
                                     [&](std::size_t v, std::size_t k, Vector factors) {
                                         products[v][k] = hn::Mul(products[v][k], factors);
                                     });
        }
        for (std::size_t k = 0; k < categories; ++k) {
            for (std::size_t v = 0; v < vectors; ++v)
                hn::Store(products[v][k], numbers, task.joints + (category + k) * task.pitch + i + v * lanes);
        }
    }
}

void MultiplyInRegisters(const ProductTask& task) {
    if (task.categories == 1) return MultiplyCategories<1, 2>(task, 0);
    if (task.categories == 2) return MultiplyCategories<2, 2>(task, 0);
    std::size_t category = 0;
    for (; category + categoriesAtOnce <= task.categories; category += categoriesAtOnce)
        MultiplyCategories<categoriesAtOnce, 4>(task, category);
    switch (task.categories - category) {
        case 3:
            return MultiplyCategories<3, 4>(task, category);
        case 2:
            return MultiplyCategories<2, 4>(task, category);
        case 1:
            return MultiplyCategories<1, 4>(task, category);
        default:
            return;
    }
}

ProductLoop RegisterLoop() {
    return MultiplyInRegisters;
}

#else

ProductLoop RegisterLoop() {
    return nullptr;
}

#endif

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(RegisterLoop);

ProductLoop FindRegisterLoop() {
    return HWY_DYNAMIC_DISPATCH(RegisterLoop)();
}

}  // namespace nbscore
#endif
