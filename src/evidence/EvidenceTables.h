#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "evidence/Evidence.h"
#include "evidence/PairWeights.h"
#include "framework/CaseReading.h"
#include "framework/ModelTables.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// A model's tables, and the weights that follow from them. Any number of threads may ask.
class EvidenceTables {
public:
    /// @param model borrowed: the tables point into it. Throws as GetScorableTables does.
    explicit EvidenceTables(const ScoreModel& model);

    bool IsSet() const { return tables.isSet; }
    const std::vector<std::string>& GetCategories() const { return categories; }
    const std::vector<std::string>& GetSubModels() const { return subModels; }
    std::size_t GetNumClassifiers() const { return tables.classifiers.size(); }
    const std::vector<std::string>& GetPredictors(std::size_t classifier) const { return predictors.at(classifier); }

    /// Fills in priors, factors, probabilities and the state of a case.
    void FillFactors(std::size_t classifier, const CaseReading& reading, Evidence& evidence) const;
    /// Throws std::out_of_range for a classifier or a category that does not exist, and std::invalid_argument for a
    /// category against itself.
    void RequirePair(std::size_t classifier, const AskedPair& asked) const;
    /// The categories to weigh against each other where the probabilities are these.
    /// @param probabilities of all categories, which are at least two.
    std::pair<std::size_t, std::size_t> ChoosePair(std::size_t classifier, std::span<const double> probabilities,
                                                   const AskedPair& asked) const;
    const ClassifierTables& GetClassifier(std::size_t classifier) const { return tables.classifiers[classifier]; }
    DensityFloor GetDensityFloor() const { return tables.densityFloor; }
    /// Made when they are first asked for, and kept as long as they are few enough.
    std::shared_ptr<const PairWeights> GetWeights(std::size_t classifier, std::size_t category,
                                                  std::size_t against) const;

private:
    using Pair = std::tuple<std::size_t, std::size_t, std::size_t>;

    void FillProbabilities(const ClassifierTables& classifier, const CaseReading& reading, Evidence& evidence) const;
    bool ScoresItsPrior(const ClassifierTables& classifier) const;
    static bool MultiplySmoothed(const CaseReading& reading, Evidence& evidence);
    static bool MultiplyScaled(const ClassifierTables& classifier, Evidence& evidence);

    ModelTables tables;
    std::vector<std::string> categories;
    std::vector<std::string> subModels;
    std::vector<std::vector<std::string>> predictors;

    mutable std::mutex mutex;
    mutable std::map<Pair, std::shared_ptr<const PairWeights>> weights;
    /// Of each classifier that was asked for; they stay.
    mutable std::map<std::size_t, std::vector<CountedShares>> shares;
    /// How many numbers these hold.
    mutable std::size_t numNumbers = 0;
};

}  // namespace nbscore
