#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/PosteriorLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                       // must stand before highway.h
#include <hwy/highway.h>

#include <vector>

#include "batch/FactorRow.h"
#include "batch/Loops.h"
#include "naivebayes/PredictedCategory.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// The rule for ties looks at counts; ties are rare enough to be decided one by one.
inline void PredictTied(const PosteriorTask& task, std::size_t i) {
    std::vector<double> probabilities(task.categories);
    for (std::size_t k = 0; k < task.categories; ++k)
        probabilities[k] = task.probabilities[k * task.pitch + i];
    const std::size_t best = PredictedCategory(probabilities, task.targetCounts);
    task.predicted[i] = static_cast<std::int32_t>(best);
    task.confidence[i] = probabilities[best];
}

/// Cases side by side.
void NormalizeAndPredictCases(const PosteriorTask& task) {
    const hn::ScalableTag<double> numbers;
    const hn::Rebind<std::uint8_t, decltype(numbers)> bytes;
    const hn::Rebind<std::int32_t, decltype(numbers)> halves;
    const std::size_t width = hn::Lanes(numbers);
    const auto one = hn::Set(numbers, 1.0);

    for (std::size_t i = 0; i < task.cases; i += width) {
        double* const column = task.probabilities + i;
        auto sum = hn::Zero(numbers);
        for (std::size_t k = 0; k < task.categories; ++k)
            sum = hn::Add(sum, hn::Load(numbers, column + k * task.pitch));
        const auto highestRow =
            hn::ConvertTo(numbers, hn::PromoteTo(hn::RebindToSigned<decltype(numbers)>(),
                                                 hn::PromoteTo(halves, hn::LoadU(bytes, task.usable + i))));
        const auto isUsable = hn::Ge(highestRow, hn::Set(numbers, double{firstKnownRow}));
        // To divide by one changes no bit.
        const auto divisor = hn::IfThenElse(isUsable, sum, one);

        auto best = hn::Zero(numbers);
        auto top = hn::Div(hn::Load(numbers, column), divisor);
        auto isTied = hn::Lt(one, one);
        hn::Store(top, numbers, column);
        for (std::size_t k = 1; k < task.categories; ++k) {
            const auto probability = hn::Div(hn::Load(numbers, column + k * task.pitch), divisor);
            hn::Store(probability, numbers, column + k * task.pitch);
            const auto isHigher = hn::Gt(probability, top);
            isTied = hn::AndNot(isHigher, hn::Or(isTied, hn::Eq(probability, top)));
            best = hn::IfThenElse(isHigher, hn::Set(numbers, static_cast<double>(k)), best);
            top = hn::IfThenElse(isHigher, probability, top);
        }
        hn::StoreU(top, numbers, task.confidence + i);
        hn::StoreU(hn::DemoteTo(halves, best), halves, task.predicted + i);
        // Of two categories the second never displaces the first.
        if (task.categories <= 2 || hn::AllFalse(numbers, isTied)) continue;
        for (std::size_t lane = 0; lane < width; ++lane)
            PredictTied(task, i + lane);
    }
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(NormalizeAndPredictCases);

void NormalizeAndPredict(const PosteriorTask& task) {
    HWY_DYNAMIC_DISPATCH(NormalizeAndPredictCases)(task);
}

}  // namespace nbscore
#endif
