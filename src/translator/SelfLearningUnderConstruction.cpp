#include "translator/SelfLearningUnderConstruction.h"

#include <utility>

namespace nbscore {

SelfLearningUnderConstruction::SelfLearningUnderConstruction() : model(std::make_unique<SelfLearningModel>()) {}
SelfLearningUnderConstruction::~SelfLearningUnderConstruction() = default;

ScoreModel& SelfLearningUnderConstruction::GetModel() {
    return *model;
}

std::unique_ptr<ScoreModel> SelfLearningUnderConstruction::Release() {
    return std::move(model);
}

bool SelfLearningUnderConstruction::IsSelfLearning() const {
    return true;
}

int SelfLearningUnderConstruction::TakeModelElements(int inDocument) {
    model->SetNumOfModels(inDocument);
    return inDocument;
}

void SelfLearningUnderConstruction::BeginSubModel(int modelIndex) {
    subModel = modelIndex;
}

void SelfLearningUnderConstruction::SetThreshold(double threshold) {
    model->SetThreshold(threshold);
}

void SelfLearningUnderConstruction::SetTargetVar(const ScoreDictVar* target) {
    model->SetTargetVar(target);
}

void SelfLearningUnderConstruction::SetNeedDerivedPredictor(bool need) {
    model->SetNeedDerivedPredictor(need);
}

void SelfLearningUnderConstruction::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    model->AddPredictorVar(subModel, name, var);
}

INBVeskEncoder& SelfLearningUnderConstruction::AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) {
    INBVeskEncoder* given = encoder.release();  // the model takes ownership even where it fails to store it
    model->AddEncoder(subModel, predictorIndex, given);
    return *given;
}

void SelfLearningUnderConstruction::SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) {
    model->SetPredCounts(subModel, predictorIndex, counts);
}

void SelfLearningUnderConstruction::SetTargetCounts(const std::vector<double>& counts) {
    model->SetTargetCounts(counts);
}

void SelfLearningUnderConstruction::SetModelName(const std::string& name) {
    model->SetModelName(subModel, name);
}

void SelfLearningUnderConstruction::SetAssessmentMean(double value) {
    model->SetAssessmentMeanValues(subModel, value);
}

void SelfLearningUnderConstruction::SetAssessmentStdDev(double value) {
    model->SetAssessmentStdDevValues(subModel, value);
}

void SelfLearningUnderConstruction::Finish(const std::string& targetName, const std::string* markedTarget) {
    std::vector<ScoreDictVar*> vars;
    model->GetDictionary()->GetAllVars(vars);
    std::vector<std::string> names;
    for (const ScoreDictVar* var : vars) {
        std::string name = var->GetName();
        if (name != targetName) names.push_back(std::move(name));
    }
    model->SetPredictorVarNames(names);
    if (markedTarget != nullptr) model->SetAllModelNames(*markedTarget);
}

}  // namespace nbscore
