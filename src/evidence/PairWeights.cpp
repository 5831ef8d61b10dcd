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

CountedShares FindSharesOf(const PredictorTables& predictor) {
    if (predictor.densities != nullptr || predictor.probabilities == nullptr) return std::nullopt;
    std::vector<double> shares;
    for (const std::vector<double>& row : *predictor.counts)
        shares.push_back(std::accumulate(row.begin(), row.end(), 0.0));
    const double whole = std::accumulate(shares.begin(), shares.end(), 0.0);
    if (!(whole > 0.0) || !std::isfinite(whole)) return std::nullopt;
    for (double& share : shares) {
        if (share < 0.0) return std::nullopt;
        share /= whole;
    }
    return shares;
}

/// The mean of the weights of all categories, each as often as it was counted.
std::optional<double> FindAverage(const std::vector<std::optional<double>>& weights, const CountedShares& shares) {
    if (!shares) return std::nullopt;
    double average = 0.0;
    for (std::size_t code = 0; code < weights.size(); ++code) {
        const double share = (*shares)[code];
        if (share == 0.0) continue;
        if (!weights[code]) return std::nullopt;
        average += share * *weights[code];
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

std::vector<CountedShares> FindShares(const ClassifierTables& classifier) {
    std::vector<CountedShares> shares;
    for (const PredictorTables& predictor : classifier.predictors)
        shares.push_back(FindSharesOf(predictor));
    return shares;
}

PairWeights::PairWeights(const ClassifierTables& classifier, const std::vector<CountedShares>& shares,
                         DensityFloor floor, std::size_t category, std::size_t against)
    : base(LogRatio({classifier.priors[category], 0.0}, {classifier.priors[against], 0.0})), averageBase(base) {
    for (std::size_t j = 0; j < classifier.predictors.size(); ++j) {
        const PredictorTables& predictor = classifier.predictors[j];
        PredictorWeights& weights = predictors.emplace_back();
        if (predictor.densities != nullptr) {
            weights.range = FindRangeOfCentres(*predictor.densities, classifier.threshold, floor, category, against);
            continue;
        }
        if (predictor.probabilities == nullptr) {
            // A predictor that nothing was counted of says nothing.
            weights.range = {.lowest = 0.0, .highest = 0.0};
            weights.average = 0.0;
        } else {
            for (std::size_t code = 0; code < predictor.probabilities->size(); ++code) {
                weights.ofCodes.push_back(WeightOf(predictor, code, category, against));
                weights.range.Widen(weights.ofCodes.back());
            }
            weights.average = FindAverage(weights.ofCodes, shares[j]);
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
