#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/SubModelLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                      // must stand before highway.h
#include <hwy/highway.h>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t lanesAtMost = 8;

using Numbers = hn::CappedTag<double, lanesAtMost>;
using Vector = hn::Vec<Numbers>;

/// The joint probabilities of so many neighbouring categories and vectors of sub-models for one case.
/// @param lane the first of the sub-models.
template <std::size_t vectors, std::size_t categories>
HWY_INLINE void Multiply(const SubModelTask& task, std::size_t i, std::size_t category, std::size_t lane,
                         Vector (&joints)[categories][vectors]) {
    const Numbers numbers;
    const std::size_t width = hn::Lanes(numbers);
    const ProductTask& product = task.product;
    const std::size_t rowLength = product.categories * task.lanes;
    const auto factorsOf = [&](const FactorStep& step) {
        const std::size_t at = step.list * product.rowPitch + product.first + i;
        const std::size_t row = step.numRows <= longestByteList ? product.narrowRows[at] : product.wideRows[at];
        return step.table + row * rowLength + category * task.lanes + lane;
    };
    const double* const begin = factorsOf(product.steps.front());
    for (std::size_t k = 0; k < categories; ++k) {
        for (std::size_t v = 0; v < vectors; ++v)
            joints[k][v] = hn::Load(numbers, begin + k * task.lanes + v * width);
    }
    for (std::size_t s = 1; s < product.steps.size(); ++s) {
        const double* const factors = factorsOf(product.steps[s]);
        for (std::size_t k = 0; k < categories; ++k) {
            for (std::size_t v = 0; v < vectors; ++v)
                joints[k][v] = hn::Mul(joints[k][v], hn::Load(numbers, factors + k * task.lanes + v * width));
        }
    }
}

/// So many vectors of sub-models for all cases: the part of the tables that is read stays in the cache. The first two
/// categories go together, so that a row is found once for both.
template <std::size_t vectors>
void ScoreLanes(const SubModelTask& task, std::size_t offset) {
    const Numbers numbers;
    const std::size_t width = hn::Lanes(numbers);
    const std::size_t lane = task.firstLane + offset;
    for (std::size_t i = 0; i < task.product.cases; ++i) {
        Vector firstTwo[2][vectors];
        Multiply<vectors>(task, i, 0, lane, firstTwo);
        Vector sums[vectors];
        for (std::size_t v = 0; v < vectors; ++v)
            sums[v] = hn::Add(hn::Add(hn::Zero(numbers), firstTwo[0][v]), firstTwo[1][v]);
        for (std::size_t k = 2; k < task.product.categories; ++k) {
            Vector next[1][vectors];
            Multiply<vectors>(task, i, k, lane, next);
            for (std::size_t v = 0; v < vectors; ++v)
                sums[v] = hn::Add(sums[v], next[0][v]);
        }
        for (std::size_t v = 0; v < vectors; ++v)
            hn::StoreU(hn::Div(firstTwo[1][v], sums[v]), numbers, task.scores + i * task.pitch + offset + v * width);
    }
}

void ScoreAllLanes(const SubModelTask& task) {
    const std::size_t width = hn::Lanes(Numbers());
    std::size_t offset = 0;
    for (; offset + 5 * width <= task.lanesToScore; offset += 5 * width)
        ScoreLanes<5>(task, offset);
    switch ((task.lanesToScore - offset) / width) {
        case 4:
            return ScoreLanes<4>(task, offset);
        case 3:
            return ScoreLanes<3>(task, offset);
        case 2:
            return ScoreLanes<2>(task, offset);
        case 1:
            return ScoreLanes<1>(task, offset);
        default:
            return;
    }
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(ScoreAllLanes);

void ScoreSubModels(const SubModelTask& task) {
    HWY_DYNAMIC_DISPATCH(ScoreAllLanes)(task);
}

}  // namespace nbscore
#endif
