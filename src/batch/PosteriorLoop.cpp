#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/PosteriorLoop.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                       // must stand before highway.h
#include <hwy/highway.h>

#include <vector>

#include "batch/Loops.h"
#include "naivebayes/PredictedCategory.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Numbers = hn::ScalableTag<double>;
using Vector = hn::Vec<Numbers>;
using Mask = hn::Mask<Numbers>;

/// @param usable a byte for each case.
inline Mask LoadUsable(const std::uint8_t* usable) {
    const Numbers numbers;
    const hn::RebindToSigned<Numbers> words;
    const hn::Rebind<std::int32_t, Numbers> halves;
    const hn::Rebind<std::uint8_t, Numbers> bytes;
    const auto isUsable = hn::PromoteTo(words, hn::PromoteTo(halves, hn::LoadU(bytes, usable)));
    return hn::RebindMask(numbers, hn::Gt(isUsable, hn::Zero(words)));
}

/// The category with the highest probability so far.
struct Best {
    explicit Best(Vector first) : top(first), place(hn::Zero(Numbers())), isTied(hn::Lt(first, first)) {}

    void Compare(std::size_t category, Vector probability) {
        const Mask isHigher = hn::Gt(probability, top);
        isTied = hn::AndNot(isHigher, hn::Or(isTied, hn::Eq(probability, top)));
        place = hn::IfThenElse(isHigher, hn::Set(Numbers(), static_cast<double>(category)), place);
        top = hn::IfThenElse(isHigher, probability, top);
    }

    Vector top;
    Vector place;
    Mask isTied;
};

inline void StoreBest(const PosteriorTask& task, std::size_t i, const Best& best) {
    const Numbers numbers;
    const hn::Rebind<std::int32_t, Numbers> halves;
    hn::StoreU(best.top, numbers, task.confidence + i);
    hn::StoreU(hn::DemoteTo(halves, best.place), halves, task.predicted + i);
}

/// The rule for ties looks at counts; ties are rare enough to be decided one by one.
/// @param probabilityOf takes a category.
template <typename ProbabilityOf>
void PredictTied(const PosteriorTask& task, std::size_t i, const ProbabilityOf& probabilityOf) {
    std::vector<double> probabilities(task.categories);
    for (std::size_t k = 0; k < task.categories; ++k)
        probabilities[k] = probabilityOf(k);
    const std::size_t best = PredictedCategory(probabilities, task.targetCounts);
    task.predicted[i] = static_cast<std::int32_t>(best);
    task.confidence[i] = probabilities[best];
}

template <std::size_t categories>
inline void StoreByCase(const Vector (&probabilities)[categories], double* out) {
    const Numbers numbers;
    if constexpr (categories == 2) hn::StoreInterleaved2(probabilities[0], probabilities[1], numbers, out);
    if constexpr (categories == 3) {
        hn::StoreInterleaved3(probabilities[0], probabilities[1], probabilities[2], numbers, out);
    }
    if constexpr (categories == 4) {
        hn::StoreInterleaved4(probabilities[0], probabilities[1], probabilities[2], probabilities[3], numbers, out);
    }
}

/// So few categories that all probabilities of a vector of cases lie in registers.
template <std::size_t categories>
void PredictFew(const PosteriorTask& task) {
    const Numbers numbers;
    const std::size_t width = hn::Lanes(numbers);
    const auto one = hn::Set(numbers, 1.0);
    for (std::size_t i = 0; i < task.cases; i += width) {
        double* const column = task.probabilities + i;
        Vector probabilities[categories];
        auto sum = hn::Zero(numbers);
        for (std::size_t k = 0; k < categories; ++k) {
            probabilities[k] = hn::Load(numbers, column + k * task.pitch);
            sum = hn::Add(sum, probabilities[k]);
        }
        // To divide by one changes no bit.
        const auto divisor = hn::IfThenElse(LoadUsable(task.usable + i), sum, one);
        for (std::size_t k = 0; k < categories; ++k)
            probabilities[k] = hn::Div(probabilities[k], divisor);
        Best best(probabilities[0]);
        for (std::size_t k = 1; k < categories; ++k)
            best.Compare(k, probabilities[k]);
        StoreBest(task, i, best);
        if (task.byCase != nullptr) {
            StoreByCase(probabilities, task.byCase + i * categories);
        } else {
            for (std::size_t k = 0; k < categories; ++k)
                hn::Store(probabilities[k], numbers, column + k * task.pitch);
        }
        // Of two categories the second never displaces the first.
        if (categories == 2 || hn::AllFalse(numbers, best.isTied)) continue;
        for (std::size_t lane = 0; lane < width; ++lane) {
            PredictTied(task, i + lane, [&](std::size_t k) {
                return task.byCase != nullptr ? task.byCase[(i + lane) * categories + k]
                                              : column[k * task.pitch + lane];
            });
        }
    }
}

void PredictMany(const PosteriorTask& task) {
    const Numbers numbers;
    const std::size_t width = hn::Lanes(numbers);
    const auto one = hn::Set(numbers, 1.0);
    for (std::size_t i = 0; i < task.cases; i += width) {
        double* const column = task.probabilities + i;
        auto sum = hn::Zero(numbers);
        for (std::size_t k = 0; k < task.categories; ++k)
            sum = hn::Add(sum, hn::Load(numbers, column + k * task.pitch));
        const auto divisor = hn::IfThenElse(LoadUsable(task.usable + i), sum, one);
        const auto divide = [&](std::size_t k) {
            const auto probability = hn::Div(hn::Load(numbers, column + k * task.pitch), divisor);
            hn::Store(probability, numbers, column + k * task.pitch);
            return probability;
        };
        Best best(divide(0));
        for (std::size_t k = 1; k < task.categories; ++k)
            best.Compare(k, divide(k));
        StoreBest(task, i, best);
        if (hn::AllFalse(numbers, best.isTied)) continue;
        for (std::size_t lane = 0; lane < width; ++lane)
            PredictTied(task, i + lane, [&](std::size_t k) { return column[k * task.pitch + lane]; });
    }
}

void NormalizeAndPredictCases(const PosteriorTask& task) {
    switch (task.categories) {
        case 2:
            return PredictFew<2>(task);
        case 3:
            return PredictFew<3>(task);
        case 4:
            return PredictFew<4>(task);
        default:
            return PredictMany(task);
    }
}

void ScoreSecondCategoryOfCases(const ScoreTask& task) {
    const Numbers numbers;
    const std::size_t width = hn::Lanes(numbers);
    const auto prior = hn::Set(numbers, task.prior);
    for (std::size_t i = 0; i < task.cases; i += width) {
        const double* const column = task.joints + i;
        const auto scored = hn::Load(numbers, column + task.pitch);
        auto sum = hn::Add(hn::Add(hn::Zero(numbers), hn::Load(numbers, column)), scored);
        for (std::size_t k = 2; k < task.categories; ++k)
            sum = hn::Add(sum, hn::Load(numbers, column + k * task.pitch));
        hn::Store(hn::IfThenElse(LoadUsable(task.usable + i), hn::Div(scored, sum), prior), numbers, task.scores + i);
    }
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(NormalizeAndPredictCases);
HWY_EXPORT(ScoreSecondCategoryOfCases);

void NormalizeAndPredict(const PosteriorTask& task) {
    HWY_DYNAMIC_DISPATCH(NormalizeAndPredictCases)(task);
}

void ScoreSecondCategory(const ScoreTask& task) {
    HWY_DYNAMIC_DISPATCH(ScoreSecondCategoryOfCases)(task);
}

}  // namespace nbscore
#endif
