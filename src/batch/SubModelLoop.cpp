#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/SubModelLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                      // must stand before highway.h
#include <hwy/highway.h>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t lanesAtMost = 8;

/// So many vectors of sub-models from `lane` on, for all cases: the part of the tables that is read stays in the cache.
template <std::size_t vectors>
void ScoreLanes(const SubModelTask& task, std::size_t lane) {
    const hn::CappedTag<double, lanesAtMost> numbers;
    using Vector = hn::Vec<decltype(numbers)>;
    const std::size_t width = hn::Lanes(numbers);
    const ProductTask& product = task.product;
    const std::size_t rowLength = product.categories * task.lanes;

    for (std::size_t i = 0; i < product.cases; ++i) {
        const auto factorsOf = [&](const FactorStep& step) {
            const std::size_t at = step.list * product.rowPitch + product.first + i;
            const std::size_t row = step.numRows <= longestByteList ? product.narrowRows[at] : product.wideRows[at];
            return step.table + row * rowLength + lane;
        };
        Vector sums[vectors];
        Vector scored[vectors];
        for (std::size_t v = 0; v < vectors; ++v)
            sums[v] = scored[v] = hn::Zero(numbers);
        for (std::size_t k = 0; k < product.categories; ++k) {
            Vector joints[vectors];
            const double* const begin = factorsOf(product.steps.front()) + k * task.lanes;
            for (std::size_t v = 0; v < vectors; ++v)
                joints[v] = hn::Load(numbers, begin + v * width);
            for (std::size_t s = 1; s < product.steps.size(); ++s) {
                const double* const factors = factorsOf(product.steps[s]) + k * task.lanes;
                for (std::size_t v = 0; v < vectors; ++v)
                    joints[v] = hn::Mul(joints[v], hn::Load(numbers, factors + v * width));
            }
            for (std::size_t v = 0; v < vectors; ++v) {
                sums[v] = hn::Add(sums[v], joints[v]);
                if (k == 1) scored[v] = joints[v];
            }
        }
        for (std::size_t v = 0; v < vectors; ++v)
            hn::Store(hn::Div(scored[v], sums[v]), numbers, task.scores + i * task.lanes + lane + v * width);
    }
}

void ScoreAllLanes(const SubModelTask& task) {
    const std::size_t width = hn::Lanes(hn::CappedTag<double, lanesAtMost>());
    std::size_t lane = 0;
    for (; lane + 8 * width <= task.lanes; lane += 8 * width)
        ScoreLanes<8>(task, lane);
    for (; lane + 4 * width <= task.lanes; lane += 4 * width)
        ScoreLanes<4>(task, lane);
    for (; lane < task.lanes; lane += width)
        ScoreLanes<1>(task, lane);
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
