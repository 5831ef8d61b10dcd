#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "framework/BaseModel.h"
#include "framework/Export.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "naivebayes/DoneOnce.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"

namespace nbscore {
struct ClassifierParts;
struct EncodedCase;
}  // namespace nbscore

/// One Naive Bayes classifier over categorical and binned predictors.
///
/// Configured by calls in this order: SetThreshold before SetTargetCounts and before any SetPredCounts;
/// SetTargetVar before the first case; for each predictor AddPredictorVar, AddEncoder and SetPredCounts, so
/// that the four lists stay aligned. Nothing checks this. What does not fit together stops the process at the
/// first index that is out of range, in release builds too; FindScoringObstacle tells beforehand.
///
/// Scoring a case x (see GetScore): with t the threshold, n_k the target counts and K their number,
///     prior(k)     = (t + n_k) / (K * t + 1 / t)
///     joint(k)     = prior(k) * product over the usable predictors j of P_j(x_j | k)
///     posterior(k) = joint(k) / sum of all joints
/// The prior's denominator is K * t + 1 / t, on purpose: the priors need not sum to one because a common
/// factor cancels in the posterior. A case without any usable predictor is scored with the priors as they
/// stand.
///
/// Threads: configuration on one thread, then any number of scoring calls at once. The first one whose record has
/// positions notes them, once, and others with such records wait for it.
class NAIVEBAYES_API NaiveBayesModel : public BaseModel,
                                       public ModelSelfCheck,
                                       public ModelSelfDescription,
                                       public ModelSelfTables {
public:
    NaiveBayesModel();
    /// Deletes the encoders and count tables; never the variables or the target values, which are borrowed.
    ~NaiveBayesModel() override;

    void SetPredictionOnly(bool only) override;
    ScoreDictionary* GetVarsOfRole(VarRole role) const override;
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) override;
    ModelType GetModelType() override;
    bool GetPredictionOnly() const override;
    void Display(std::ostream& out) const override;

    /// Speaks of every model that some case could stop, whether or not only the prediction is wanted.
    std::string FindScoringObstacle() const override;

    nbscore::ModelDescription Describe() const override;
    nbscore::ModelTables GetTables() const override;

    /// Stores the target and, where it declares values, takes them as the target categories, in order; a
    /// target that declares none leaves the categories as they were. Both are borrowed. With null there is no
    /// target and no category.
    void SetTargetVar(const ScoreDictVar* target);
    /// Appends a predictor. The variable is borrowed and may be null.
    void AddPredictorVar(const std::string& name, const ScoreDictVar* var);
    /// Appends the next predictor's encoder; the model takes ownership.
    void AddEncoder(INBVeskEncoder* encoder);
    /// Appends the next predictor's count table, made with the threshold as it is now. The number is ignored
    /// on purpose (it is part of the interface): tables are kept in the order of the calls.
    void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts);
    /// Takes the counts of the target categories and computes the priors with the threshold as it is now.
    void SetTargetCounts(const std::vector<double>& counts);
    void SetPredictorVarNames(const std::vector<std::string>& names);
    std::vector<std::string> GetPredictorVarNames() const;
    /// Recomputes nothing: what was counted before keeps the old threshold.
    void SetThreshold(double newThreshold);
    void SetNeedDerivedPredictor(bool need);
    bool NeedDerivedPredictor() const;

private:
    int ComputeTargetProbabilities();
    double ComputePXYPY(const std::vector<double>& codes, int targetIndex) const;
    void SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord);
    std::vector<double> ComputePosteriors(const nbscore::EncodedCase& encoded) const;
    std::string FindTargetObstacle() const;
    nbscore::ClassifierParts GetParts() const;

    std::vector<std::string> predictorVarNames;
    double threshold = 0.0;
    std::atomic<bool> predictionOnly = false;
    std::vector<std::unique_ptr<INBVeskEncoder>> encoders;
    const ScoreDictVar* targetVar = nullptr;
    std::vector<ScoreValue*> targetValues;
    std::vector<double> targetCounts;
    std::vector<double> targetProbabilities;
    /// Whether positions in records are noted.
    nbscore::DoneOnce dictVarIndexReady;
    std::vector<const ScoreDictVar*> predictorVars;
    std::vector<std::unique_ptr<NBayesInputBase>> predCounts;
    bool needDerivedPredictor = false;
};
