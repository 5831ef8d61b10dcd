#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "framework/BaseModel.h"
#include "framework/Export.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/ScoreClsResult.h"
#include "naivebayes/Classifier.h"
#include "naivebayes/DoneOnce.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "naivebayes/Target.h"

namespace nbscore {
class PlanOnce;
}

/// One Naive Bayes classifier over categorical and binned predictors.
///
/// Configured by calls in this order: SetThreshold before SetTargetCounts and before any SetPredCounts;
/// SetTargetVar before the first case; for each predictor AddPredictorVar, AddEncoder and SetPredCounts, so
/// that the four lists stay aligned. Nothing checks this. What does not fit together stops the process at the
/// first index that is out of range, in release builds too; FindScoringObstacle tells beforehand.
///
/// Classifier tells how a case is scored. A case without any usable predictor is scored with the priors as they stand,
/// which need not sum to one.
///
/// Threads: configuration on one thread, then any number of scoring calls at once. The first one lays the factors out
/// for scoring (which holds them a second time), and the first one whose record has positions notes them; each is done
/// once, and others that need it wait for it.
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
    nbscore::ScoringObstacle FindScoringObstacle() const override;

    nbscore::ModelDescription Describe() const override;
    nbscore::ModelTables GetTables() const override;
    void ReadCase(const ScoreCaseRecord* record, std::size_t classifier, bool derivedInRecord,
                  nbscore::CaseReading& reading) override;

    /// Stores the target and, where it declares values, takes them as the target categories, in order; a
    /// target that declares none leaves the categories as they were. Both are borrowed. With null there is no
    /// target and no category.
    void SetTargetVar(const ScoreDictVar* targetVar);
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
    void SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord);
    std::vector<double> ComputeProbabilities(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord) const;
    void FillResult(ScoreClsResult& result, std::span<const double> probabilities) const;
    /// Forgets what was prepared for cases of a model that is about to change.
    void ForgetPlan();

    nbscore::Target target;
    nbscore::Classifier classifier;
    std::atomic<bool> predictionOnly = false;
    bool needDerivedPredictor = false;
    /// Whether positions in records are noted.
    nbscore::DoneOnce dictVarIndexReady;
    /// How cases are scored; made for the first one. Never null.
    std::unique_ptr<nbscore::PlanOnce> plan;
};
