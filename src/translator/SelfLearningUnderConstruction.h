#pragma once

#include "selflearning/SelfLearningModel.h"
#include "translator/ModelUnderConstruction.h"

namespace nbscore {

/// A set of sub-models while a document is read into it: one sub-model per model element, in document order.
class SelfLearningUnderConstruction : public ModelUnderConstruction {
public:
    SelfLearningUnderConstruction();
    ~SelfLearningUnderConstruction() override;

    ScoreModel& GetModel() override;
    std::unique_ptr<ScoreModel> Release() override;
    bool IsSelfLearning() const override;
    int TakeModelElements(int inDocument) override;
    void BeginSubModel(int modelIndex) override;
    void SetThreshold(double threshold) override;
    void SetTargetVar(const ScoreDictVar* target) override;
    void SetNeedDerivedPredictor(bool need) override;
    void AddPredictorVar(const std::string& name, const ScoreDictVar* var) override;
    INBVeskEncoder& AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) override;
    void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) override;
    void SetTargetCounts(const std::vector<double>& counts) override;
    void SetModelName(const std::string& name) override;
    void SetAssessmentMean(double value) override;
    void SetAssessmentStdDev(double value) override;
    /// Lists every field of the dictionary but the target, used or not, as those whose positions in records are noted,
    /// and takes the declared values of the marked target as the names of all models.
    void Finish(const std::string& targetName, const std::string* markedTarget) override;

private:
    std::unique_ptr<SelfLearningModel> model;
    int subModel = 0;
};

}  // namespace nbscore
