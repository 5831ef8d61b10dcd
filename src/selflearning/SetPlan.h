#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "framework/ModelTables.h"
#include "framework/ScoreCaseRecord.h"
#include "naivebayes/Classifier.h"

namespace nbscore {

/// How all sub-models of a set are scored for one case. A field that sub-models read alike, as the same categories, is
/// fetched and encoded once for a case, however many they are; and the factors of all sub-models lie in one piece.
/// Each product is that of Classifier, factor by factor, bit for bit.
///
/// It copies what the sub-models multiply with: a change of one asks for a new plan. Unchanging itself, so that any
/// number of threads may score by it.
class SetPlan {
public:
    /// Null where sub-models can only be scored one by one: encoders of foreign classes, predictors that were not
    /// counted.
    /// @param classifiers of a set that can score every case; borrowed, they must outlive the plan.
    /// @param tables the same set's, laid open; only read here.
    static std::unique_ptr<const SetPlan> Make(std::vector<const Classifier*> classifiers, const ModelTables& tables);

    /// For each sub-model the probability of a target category, or its raw prior where a case says nothing to it.
    /// @param derivedRecord may be null.
    /// @param scores out, one for each sub-model.
    void Score(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, std::size_t scoredCategory,
               std::span<double> scores) const;

private:
    /// The place of a predictor whose value is fetched and encoded, for itself and for all that read alike.
    struct Read {
        std::size_t model;
        std::size_t predictor;
    };
    /// One predictor's part in its sub-model's product.
    struct Step {
        std::uint32_t read;
        /// That of its first category in the rows of factors.
        std::uint32_t firstRow;
    };
    struct SubModel {
        /// The steps of this one and of all before it.
        std::uint32_t numSteps;
        /// Whether a prior of zero is its answer to every case, or the other prior beside it.
        bool isFixed;
    };
    class Reads;

    SetPlan(std::vector<const Classifier*> ofSubModels, std::size_t targets);
    void AddSubModel(std::size_t model, const ClassifierTables& tables, Reads& reads);
    template <typename Joints>
    void ScoreEach(std::span<const int> codes, Joints joints, std::size_t scoredCategory,
                   std::span<double> scores) const;

    std::vector<const Classifier*> classifiers;
    std::size_t numTargets;
    std::vector<Read> distinctReads;
    std::vector<Step> steps;
    std::vector<SubModel> subModels;
    /// The priors of each sub-model, numTargets of them.
    std::vector<double> priors;
    /// Rows of numTargets factors. The first is all ones: that of a predictor that a case does not speak of.
    std::vector<double> factors;
};

}  // namespace nbscore
