#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "naivebayes/NaiveBayesModel.h"
#include "selflearning/SelfLearningModel.h"

namespace nbscore {

/// A model while a document is read into it: a single classifier, made of the document's first model element alone, or
/// a set of sub-models, one for each model element in document order. BeginSubModel says which of them the calls that
/// follow are about.
///
/// What readers call is virtual so that their tests can listen.
class ModelUnderConstruction {
public:
    /// @param selfLearning asks for a set.
    explicit ModelUnderConstruction(bool selfLearning);
    virtual ~ModelUnderConstruction();
    ModelUnderConstruction(const ModelUnderConstruction&) = delete;
    ModelUnderConstruction& operator=(const ModelUnderConstruction&) = delete;

    /// The model itself, for what all models have in common. It stays with this object until Release.
    ScoreModel& GetModel();
    /// Hands the model over; nothing else may be called afterwards.
    std::unique_ptr<ScoreModel> Release();
    /// True for a set of sub-models that share a target of two categories.
    bool IsSelfLearning() const { return set != nullptr; }
    /// Before the first sub-model of a set; a single model ignores it.
    void MakeRoomFor(int subModels);

    virtual void BeginSubModel(int modelIndex);
    virtual void SetThreshold(double threshold);
    /// The variable is borrowed from the model's dictionary.
    virtual void SetTargetVar(const ScoreDictVar* target);
    virtual void SetNeedDerivedPredictor(bool need);
    virtual void AddPredictorVar(const std::string& name, const ScoreDictVar* var);
    /// Gives the model the next predictor's encoder. What is answered stays the model's.
    virtual INBVeskEncoder& AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder);
    virtual void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts);
    virtual void SetTargetCounts(const std::vector<double>& counts);

    /// What only a set of sub-models has; a single model ignores it.
    virtual void SetModelName(const std::string& name);
    virtual void SetAssessmentMean(double value);
    virtual void SetAssessmentStdDev(double value);
    /// Closes a set after its last sub-model: lists every field of the dictionary but the target, used or not, as those
    /// whose positions in records are noted, and takes the declared values of the marked target as the names of all
    /// models.
    /// @param targetName empty when no model element named a target.
    /// @param markedTarget the field that the dictionary marks as the self-learning target; null when it marks none.
    virtual void Finish(const std::string& targetName, const std::string* markedTarget);

private:
    /// One of the two.
    std::unique_ptr<NaiveBayesModel> single;
    std::unique_ptr<SelfLearningModel> set;
    int subModel = 0;
};

}  // namespace nbscore
