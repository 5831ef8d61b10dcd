#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/ScoreModel.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"

namespace nbscore {

/// A model while a document is read into it: the one face that the readers see of every kind of model.
///
/// A document may describe one model or a set of sub-models, one per model element. BeginSubModel says which
/// of them the calls that follow are about.
class ModelUnderConstruction {
public:
    virtual ~ModelUnderConstruction() = default;

    /// The model itself, for what all models have in common. It stays with this object until Release.
    virtual ScoreModel& GetModel() = 0;
    /// Hands the model over; nothing else may be called afterwards.
    virtual std::unique_ptr<ScoreModel> Release() = 0;
    /// True for a set of sub-models that share a target of two categories.
    virtual bool IsSelfLearning() const = 0;
    /// How many of a document's model elements make this model, which makes room for as many.
    virtual int TakeModelElements(int inDocument) = 0;

    virtual void BeginSubModel(int modelIndex) = 0;
    virtual void SetThreshold(double threshold) = 0;
    /// The variable is borrowed from the model's dictionary.
    virtual void SetTargetVar(const ScoreDictVar* target) = 0;
    virtual void SetNeedDerivedPredictor(bool need) = 0;
    virtual void AddPredictorVar(const std::string& name, const ScoreDictVar* var) = 0;
    /// Gives the model the next predictor's encoder. What is answered stays the model's.
    virtual INBVeskEncoder& AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) = 0;
    virtual void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) = 0;
    virtual void SetTargetCounts(const std::vector<double>& counts) = 0;

    /// What only a set of sub-models has; a single model passes it over.
    virtual void SetModelName(const std::string& /*name*/) {}
    virtual void SetAssessmentMean(double /*value*/) {}
    virtual void SetAssessmentStdDev(double /*value*/) {}
    /// Closes the set after its last sub-model.
    /// @param targetName empty when no model element named a target.
    /// @param markedTarget the field that the dictionary marks as the self-learning target; null when it marks none.
    virtual void Finish(const std::string& /*targetName*/, const std::string* /*markedTarget*/) {}

protected:
    ModelUnderConstruction() = default;
    ModelUnderConstruction(const ModelUnderConstruction&) = delete;
    ModelUnderConstruction& operator=(const ModelUnderConstruction&) = delete;
};

}  // namespace nbscore
