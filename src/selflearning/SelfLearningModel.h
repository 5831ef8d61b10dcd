#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/BaseModel.h"
#include "framework/Export.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/SubModelScoring.h"
#include "naivebayes/Classifier.h"
#include "naivebayes/DoneOnce.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "naivebayes/Target.h"

namespace nbscore {
class PlanOnce;
}

/// A set of Naive Bayes classifiers, its sub-models, that share one target of two categories. Each has a name,
/// predictors, counts, a threshold and assessment figures of its own. Scoring a case gives every sub-model's
/// probability of the target's second category, or its raw prior where a case says nothing to it; the sub-models are
/// not combined.
///
/// Configured by calls in this order: SetNumOfModels first; SetThreshold and SetTargetCounts once per sub-model, in
/// the order of the sub-models; SetThreshold of a sub-model before its first SetPredCounts; per predictor of a
/// sub-model AddPredictorVar, AddEncoder and SetPredCounts. Setters that take a sub-model's index ignore one that is
/// out of range, except AddPredictorVar, which stops the process.
///
/// Classifier tells how a sub-model scores a case; each has its own threshold.
///
/// Threads: configuration on one thread, then any number of scoring calls at once. The first one computes the priors
/// and lays the sub-models' factors out for scoring (which holds them a second time), and the first one whose record
/// has positions notes them; each is done once, and others that need it wait for it.
class NAIVEBAYES_API SelfLearningModel : public BaseModel,
                                         public ModelSelfCheck,
                                         public ModelSelfDescription,
                                         public ModelSelfTables,
                                         public SubModelScoring {
public:
    SelfLearningModel();
    /// Deletes the encoders and count tables; never the variables or the target values, which are borrowed.
    ~SelfLearningModel() override;

    void SetPredictionOnly(bool only) override;
    ScoreDictionary* GetVarsOfRole(VarRole role) const override;
    /// Fills the result with a VectorValue of one SelfLearningResult::ModelDescriptor per sub-model. A result of the
    /// type of a single classifier's is filled again; any other, a SelfLearningResult among them, is deleted and
    /// replaced by a new one on every call. Deliberate: it is part of the interface.
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) override;
    ModelType GetModelType() override;
    bool GetPredictionOnly() const override;
    void Display(std::ostream& out) const override;

    /// Names the sub-model at fault, counted from 0.
    nbscore::ScoringObstacle FindScoringObstacle() const override;

    nbscore::ModelDescription Describe() const override;
    nbscore::ModelTables GetTables() const override;
    void ReadCase(const ScoreCaseRecord* record, std::size_t classifier, bool derivedInRecord,
                  nbscore::CaseReading& reading) override;

    double ScoreSubModel(const ScoreCaseRecord* record, int subModel, bool derivedInRecord) override;

    /// Sizes everything that is per sub-model, and resets names to empty and assessment figures to system-missing.
    /// Thresholds and target counts are not touched.
    /// @param count not negative.
    void SetNumOfModels(int count);
    int GetNumOfModels() const { return numOfModels; }
    void SetModelName(int model, const std::string& name);
    /// One for each sub-model, in order; empty where none was set.
    std::vector<std::string> GetModelNames() const;
    void SetAssessmentMeanValues(int model, double value);
    void SetAssessmentStdDevValues(int model, double value);

    /// Appends a predictor to a sub-model. The variable is borrowed and may be null.
    void AddPredictorVar(int model, const std::string& name, const ScoreDictVar* var);
    /// Appends the next predictor's encoder; the model takes ownership, but not of one whose sub-model does not
    /// exist. The predictor's index is ignored on purpose: encoders are kept in the order of the calls.
    void AddEncoder(int model, int predictorIndex, INBVeskEncoder* encoder);
    /// Appends the next predictor's count table, made with the sub-model's threshold, which must have been set: without
    /// it the process stops. The predictor's index is ignored on purpose, as for AddEncoder.
    void SetPredCounts(int model, int predictorIndex, const NBayesInputBase::Matrix& counts);
    /// Appends the next sub-model's target counts.
    void SetTargetCounts(const std::vector<double>& counts);
    /// Appends the next sub-model's threshold.
    void SetThreshold(double threshold);
    /// Stores the target and, where it declares values, takes them as the target categories, in order; a target that
    /// declares none leaves the categories as they were. Both are borrowed. With null there is no target and no
    /// category.
    void SetTargetVar(const ScoreDictVar* targetVar);

    /// Appends the declared values of a variable of the dictionary to the list of all model names; false, changing
    /// nothing, without a dictionary, such a variable or declared values.
    bool SetAllModelNames(const std::string& varName);
    std::vector<std::string> GetAllModelNames() const;
    /// The names of all fields whose positions in records are noted.
    void SetPredictorVarNames(const std::vector<std::string>& names);
    std::vector<std::string> GetPredictorVarNames() const;
    void SetNeedDerivedPredictor(bool need);
    bool NeedDerivedPredictor() const;

private:
    struct SubModel {
        std::string name;
        double assessmentMean = 0.0;
        double assessmentStdDev = 0.0;
        nbscore::Classifier classifier;
    };

    bool HasModel(int model) const { return model >= 0 && model < numOfModels; }
    /// The process stops where the set has none of this number.
    const SubModel& GetSubModel(int model) const;
    /// The classifier at a position, which may be beyond numOfModels. The process stops where it has no threshold yet.
    const nbscore::Classifier& GetWithThreshold(std::size_t model) const;
    nbscore::Classifier& GetWithThreshold(std::size_t model);
    /// The first classifier that was not given its threshold, or its target counts, yet.
    /// @param numGiven how many were; counts this one.
    nbscore::Classifier& GetNext(std::size_t& numGiven);

    /// What is left to do before the first case: computing the priors, and noting positions where the record has any.
    void PrepareScoring(const ScoreCaseRecord* record, bool derivedInRecord);
    void SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord);
    void ComputeTargetProbabilities();
    /// What they are once the first case has been scored, and what they will be before that.
    std::vector<double> GetTargetProbabilities(std::size_t model) const;
    double GetScoreFromModel(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord, int model) const;
    /// Those of all sub-models.
    std::vector<double> GetScores(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord);
    /// Forgets what was prepared for cases of a model that is about to change.
    void ForgetPlan();

    nbscore::ScoringObstacle FindSubModelObstacle(std::size_t model) const;
    void DisplaySubModel(std::ostream& out, std::size_t model) const;

    nbscore::Target target;
    /// The numOfModels sub-models, and behind them any that have only a threshold or target counts: these may be given
    /// before SetNumOfModels is called, and stay when it is called with a lower number.
    std::vector<SubModel> subModels;
    int numOfModels = 0;
    std::size_t numThresholds = 0;
    std::size_t numTargetCounts = 0;
    /// How many sub-models had target counts when the priors were computed.
    std::size_t numTargetProbabilities = 0;
    nbscore::DoneOnce targetProbabilitiesComputed;
    std::vector<std::string> allModelNames;
    std::vector<std::string> predictorVarNames;
    /// Whether positions in records are noted.
    nbscore::DoneOnce dictVarIndexSetUp;
    /// How all sub-models are scored; made for the first case. Never null.
    std::unique_ptr<nbscore::PlanOnce> plan;
    std::atomic<bool> predictionOnly = false;
    bool needDerivedPredictor = false;
};
