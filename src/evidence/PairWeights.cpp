#include "evidence/PairWeights.h"

#include <cmath>
#include <numbers>
#include <numeric>

#include "naivebayes/Density.h"
#include "naivebayes/DensityFactor.h"

namespace nbscore {
namespace {

bool IsAboveZero(const ScaledNumber& number) {
    return number.mantissa > 0.0 && std::isfinite(number.mantissa);
}

/// The value in the middle of what a density says is likely; nothing where it says nothing.
std::optional<double> CentreOf(const Density& density) {
    switch (density.kind) {
        case Density::Gaussian:
        case Density::Any:
            return density.first;
        case Density::Poisson:
            return std::floor(density.first);
        case Density::Uniform:
            return density.first / 2.0 + density.second / 2.0;
        case Density::None:
            break;
    }
    return std::nullopt;
}

WeightRange FindRangeOfCentres(const std::vector<Density>& densities, double threshold, DensityFloor floor,
                               std::size_t category, std::size_t against) {
    WeightRange range;
    for (const Density& density : densities) {
        const std::optional<double> centre = CentreOf(density);
        if (!centre || !SpeakOf(densities, *centre)) continue;
        range.Widen(LogRatio(FactorAt(densities[category], *centre, threshold, floor),
                             FactorAt(densities[against], *centre, threshold, floor)));
    }
    return range;
}

/// The mean of the weights of all categories, each as often as it was counted.
std::optional<double> FindAverage(const std::vector<std::optional<double>>& weights,
                                  const std::vector<std::vector<double>>& counts) {
    std::vector<double> totals;
    for (const std::vector<double>& row : counts)
        totals.push_back(std::accumulate(row.begin(), row.end(), 0.0));
    const double whole = std::accumulate(totals.begin(), totals.end(), 0.0);
    if (!(whole > 0.0) || !std::isfinite(whole)) return std::nullopt;
    double average = 0.0;
    for (std::size_t code = 0; code < totals.size(); ++code) {
        if (totals[code] == 0.0) continue;
        if (totals[code] < 0.0 || !weights[code]) return std::nullopt;
        average += totals[code] / whole * *weights[code];
    }
    return average;
}

}  // namespace

std::optional<double> LogRatio(const ScaledNumber& one, const ScaledNumber& other) {
    if (!IsAboveZero(one) || !IsAboveZero(other)) return std::nullopt;
    if (one.exponent == other.exponent) {
        const double ratio = one.mantissa / other.mantissa;
        if (std::isnormal(ratio)) return std::log(ratio);
    }
    ScaledNumber top = one;
    ScaledNumber bottom = other;
    top.Normalize();
    bottom.Normalize();
    const ScaledNumber ratio{top.mantissa / bottom.mantissa, top.exponent - bottom.exponent};
    const double plain = ratio.Shifted(0.0);
    return std::isnormal(plain) ? std::log(plain) : std::log(ratio.mantissa) + ratio.exponent * std::numbers::ln2;
}

std::optional<double> WeightOf(const PredictorTables& predictor, std::size_t code, std::size_t category,
                               std::size_t against) {
    const std::vector<double>& factors = (*predictor.probabilities)[code];
    return LogRatio({factors[category], 0.0}, {factors[against], 0.0});
}

WeightRange FindRange(const PredictorTables& predictor, double threshold, DensityFloor floor, std::size_t category,
                      std::size_t against) {
    if (predictor.densities != nullptr) {
        return FindRangeOfCentres(*predictor.densities, threshold, floor, category, against);
    }
    // A predictor that nothing was counted of says nothing.
    if (predictor.probabilities == nullptr) return {.lowest = 0.0, .highest = 0.0};
    WeightRange range;
    for (std::size_t code = 0; code < predictor.probabilities->size(); ++code)
        range.Widen(WeightOf(predictor, code, category, against));
    return range;
}

PairWeights::PairWeights(const ClassifierTables& classifier, DensityFloor floor, std::size_t category,
                         std::size_t against)
    : base(LogRatio({classifier.priors[category], 0.0}, {classifier.priors[against], 0.0})), averageBase(base) {
    for (const PredictorTables& predictor : classifier.predictors) {
        PredictorWeights& weights = predictors.emplace_back();
        weights.range = FindRange(predictor, classifier.threshold, floor, category, against);
        if (predictor.densities != nullptr) continue;
        weights.average = 0.0;
        if (predictor.probabilities != nullptr) {
            for (std::size_t code = 0; code < predictor.probabilities->size(); ++code)
                weights.ofCodes.push_back(WeightOf(predictor, code, category, against));
            weights.average = FindAverage(weights.ofCodes, *predictor.counts);
        }
        if (averageBase && weights.average) *averageBase += *weights.average;
    }
}

std::size_t PairWeights::CountNumbers() const {
    std::size_t count = 0;
    for (const PredictorWeights& predictor : predictors)
        count += predictor.ofCodes.size() + 1;
    return count;
}

}  // namespace nbscore
