#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "factors/CaseFactors.h"
#include "factors/FactorRow.h"
#include "framework/ModelTables.h"
#include "framework/ScoreCaseRecord.h"
#include "naivebayes/DoneOnce.h"
#include "naivebayes/FieldRead.h"

namespace nbscore {

/// How a model's classifiers score one case, by the smoothed rule. A field that predictors read alike, as the same
/// categories, is fetched and looked up once for a case, however many they are; and all factors lie in one piece. The
/// answers are those of Classifier, bit for bit.
///
/// It copies what the classifiers score with: a change of one asks for a new plan. Unchanging itself, so that any
/// number of threads may score by it.
class ScoringPlan {
public:
    /// Null where only the classifiers themselves can score: they have encoders of foreign classes, or fewer priors
    /// than there are target categories.
    /// @param tables of a model that can score every case; only read here, but for variables, which are borrowed.
    static std::unique_ptr<const ScoringPlan> Make(const ModelTables& tables);

    /// Of a single classifier: the posterior probability of each target category, or the raw priors where a case says
    /// nothing to it.
    /// @param derivedRecord may be null.
    void ComputePosteriors(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                           std::span<double> posteriors) const;
    /// Of each sub-model the probability of the target's second category, or its raw prior.
    void ComputeScores(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                       std::span<double> scores) const;

private:
    class ReadsByCategories;

    explicit ScoringPlan(const ModelTables& tables);
    /// The number of each predictor's read.
    std::vector<std::size_t> AddReads(const ModelTables& tables);
    void FindPlaces(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                    std::span<FactorRow> places) const;

    std::vector<FieldRead> reads;
    CaseFactors factors;
};

/// A model's plan, made for its first case. Any thread may ask. A model that changes starts with a new one of these.
class PlanOnce {
public:
    /// Null where the classifiers score themselves.
    /// @param findTables gives the model's tables, or nothing where it cannot score every case; called by the thread
    /// that comes first, and by no other.
    template <typename FindTables>
    const ScoringPlan* Get(const FindTables& findTables) {
        once.Do([&] {
            if (const std::optional<ModelTables> tables = findTables()) plan = ScoringPlan::Make(*tables);
        });
        return plan.get();
    }
    /// Whether it was asked for.
    bool IsMade() const { return once.IsDone(); }

private:
    DoneOnce once;
    std::unique_ptr<const ScoringPlan> plan;
};

}  // namespace nbscore
