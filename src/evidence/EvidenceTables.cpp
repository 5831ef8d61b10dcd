#include "evidence/EvidenceTables.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "batch/BatchEngine.h"
#include "naivebayes/DensityFactor.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/StandardProduct.h"

namespace nbscore {
namespace {

/// Of all pairs' weights that are kept at a time; a target of many categories has very many pairs.
constexpr std::size_t mostNumbers = std::size_t{1} << 22;

void RequireCategory(std::size_t position, std::size_t categories) {
    if (position < categories) return;
    throw std::out_of_range("There is no category " + std::to_string(position) + ": the target has " +
                            std::to_string(categories) + ".");
}

/// The first of the most probable categories but one.
std::size_t MostProbableBut(std::span<const double> probabilities, std::size_t left) {
    std::size_t best = left == 0 ? 1 : 0;
    for (std::size_t k = best + 1; k < probabilities.size(); ++k) {
        if (k != left && probabilities[k] > probabilities[best]) best = k;
    }
    return best;
}

}  // namespace

EvidenceTables::EvidenceTables(const ScoreModel& model) : tables(GetScorableTables(model)) {
    for (const ScoreValue* category : tables.targetCategories)
        categories.push_back(category->GetString());
    for (const ClassifierTables& classifier : tables.classifiers) {
        if (tables.isSet) subModels.push_back(classifier.name);
        std::vector<std::string>& names = predictors.emplace_back();
        for (const PredictorTables& predictor : classifier.predictors)
            names.push_back(*predictor.name);
    }
}

void EvidenceTables::FillFactors(std::size_t position, const CaseReading& reading, Evidence& evidence) const {
    const ClassifierTables& classifier = tables.classifiers[position];
    evidence.priors = classifier.priors;
    evidence.predictors.resize(classifier.predictors.size());
    for (std::size_t j = 0; j < classifier.predictors.size(); ++j) {
        const PredictorReading& read = reading.predictors[j];
        const PredictorTables& predictor = classifier.predictors[j];
        std::vector<ScaledNumber>& factors = evidence.predictors[j].factors;
        evidence.predictors[j].kind = read.kind;
        factors.clear();
        if (read.kind != PredictorReading::Known) continue;
        if (predictor.densities != nullptr) {
            for (const Density& density : *predictor.densities)
                factors.push_back(FactorAt(density, read.number, classifier.threshold, tables.densityFloor));
        } else {
            for (const double factor : (*predictor.probabilities)[static_cast<std::size_t>(read.code)])
                factors.push_back({factor, 0.0});
        }
    }
    FillProbabilities(classifier, reading, evidence);
}

void EvidenceTables::FillProbabilities(const ClassifierTables& classifier, const CaseReading& reading,
                                       Evidence& evidence) const {
    evidence.probabilities.clear();
    evidence.invalidField.clear();
    if (reading.invalidField != nullptr) {
        evidence.state = Evidence::InvalidValue;
        evidence.invalidField = *reading.invalidField;
        return;
    }
    if (ScoresItsPrior(classifier)) {
        evidence.state = Evidence::VanishedPrior;
        evidence.probabilities = classifier.priors;
        return;
    }
    evidence.state = reading.usable > 0 ? Evidence::Explained : Evidence::NothingKnown;
    evidence.probabilities = classifier.priors;
    const bool isPossible = tables.rule == ScoringRule::Standard ? MultiplyScaled(classifier, evidence)
                                                                 : MultiplySmoothed(reading, evidence);
    if (!isPossible) {
        evidence.state = Evidence::NothingPossible;
        evidence.probabilities.clear();
    } else if (evidence.state == Evidence::Explained && evidence.probabilities.size() < 2) {
        evidence.state = Evidence::NoOtherCategory;
    }
}

/// A sub-model with a prior of 0 does not look at the case.
bool EvidenceTables::ScoresItsPrior(const ClassifierTables& classifier) const {
    return tables.isSet && std::ranges::find(classifier.priors, 0.0) != classifier.priors.end();
}

bool EvidenceTables::MultiplySmoothed(const CaseReading& reading, Evidence& evidence) {
    std::vector<double>& joints = evidence.probabilities;
    if (reading.usable > 0) {
        for (const PredictorEvidence& predictor : evidence.predictors) {
            if (predictor.factors.empty()) continue;
            for (std::size_t k = 0; k < joints.size(); ++k)
                joints[k] *= predictor.factors[k].mantissa;
        }
        double sum = 0.0;
        for (const double joint : joints)
            sum += joint;
        for (double& joint : joints)
            joint /= sum;
    }
    return std::ranges::all_of(joints, [](double probability) { return std::isfinite(probability); });
}

bool EvidenceTables::MultiplyScaled(const ClassifierTables& classifier, Evidence& evidence) {
    StandardProduct product;
    product.Begin(classifier.priors);
    for (const PredictorEvidence& predictor : evidence.predictors) {
        if (!predictor.factors.empty()) product.MultiplyBy(predictor.factors);
    }
    return product.Finish(evidence.probabilities);
}

void EvidenceTables::RequirePair(std::size_t classifier, const AskedPair& asked) const {
    if (classifier >= GetNumClassifiers()) {
        throw std::out_of_range("There is no classifier " + std::to_string(classifier) + ": the model has " +
                                std::to_string(GetNumClassifiers()) + ".");
    }
    const std::size_t numCategories = tables.classifiers[classifier].priors.size();
    if (asked.category) RequireCategory(*asked.category, numCategories);
    if (asked.against) RequireCategory(*asked.against, numCategories);
    if (asked.category && asked.category == asked.against) {
        throw std::invalid_argument("A category is weighed against itself.");
    }
}

std::pair<std::size_t, std::size_t> EvidenceTables::ChoosePair(std::size_t classifier,
                                                               std::span<const double> probabilities,
                                                               const AskedPair& asked) const {
    if (asked.category && asked.against) return {*asked.category, *asked.against};
    if (asked.category) return {*asked.category, MostProbableBut(probabilities, *asked.category)};
    if (asked.against) return {MostProbableBut(probabilities, *asked.against), *asked.against};
    if (probabilities.size() == 2) return {1, 0};
    const std::size_t predicted = tables.rule == ScoringRule::Standard
                                      ? predicted_category::FirstHighest(probabilities)
                                      : PredictedCategory(probabilities, tables.classifiers[classifier].targetCounts);
    return {predicted, MostProbableBut(probabilities, predicted)};
}

std::shared_ptr<const PairWeights> EvidenceTables::GetWeights(std::size_t classifier, std::size_t category,
                                                              std::size_t against) const {
    const Pair pair{classifier, category, against};
    const std::vector<CountedShares>* sharesOfPredictors = nullptr;
    {
        const std::lock_guard lock(mutex);
        const auto known = weights.find(pair);
        if (known != weights.end()) return known->second;
        auto found = shares.find(classifier);
        if (found == shares.end()) found = shares.emplace(classifier, FindShares(tables.classifiers[classifier])).first;
        sharesOfPredictors = &found->second;
    }
    auto made = std::make_shared<const PairWeights>(tables.classifiers[classifier], *sharesOfPredictors,
                                                    tables.densityFloor, category, against);
    const std::lock_guard lock(mutex);
    if (numNumbers + made->CountNumbers() > mostNumbers) {
        weights.clear();
        numNumbers = 0;
    }
    const auto [entry, isNew] = weights.try_emplace(pair, made);
    if (isNew) numNumbers += made->CountNumbers();
    return entry->second;
}

}  // namespace nbscore
