#include "translator/ModelUnderConstruction.h"

#include <utility>

namespace nbscore {

ModelUnderConstruction::ModelUnderConstruction(bool selfLearning) {
    if (selfLearning) {
        set = std::make_unique<SelfLearningModel>();
    } else {
        single = std::make_unique<NaiveBayesModel>();
    }
}

ModelUnderConstruction::~ModelUnderConstruction() = default;

ScoreModel& ModelUnderConstruction::GetModel() {
    if (set != nullptr) return *set;
    return *single;
}

std::unique_ptr<ScoreModel> ModelUnderConstruction::Release() {
    if (set != nullptr) return std::move(set);
    return std::move(single);
}

void ModelUnderConstruction::MakeRoomFor(int subModels) {
    if (set != nullptr) set->SetNumOfModels(subModels);
}

void ModelUnderConstruction::BeginSubModel(int modelIndex) {
    subModel = modelIndex;
}

void ModelUnderConstruction::SetThreshold(double threshold) {
    set != nullptr ? set->SetThreshold(threshold) : single->SetThreshold(threshold);
}

void ModelUnderConstruction::SetTargetVar(const ScoreDictVar* target) {
    set != nullptr ? set->SetTargetVar(target) : single->SetTargetVar(target);
}

void ModelUnderConstruction::SetNeedDerivedPredictor(bool need) {
    set != nullptr ? set->SetNeedDerivedPredictor(need) : single->SetNeedDerivedPredictor(need);
}

void ModelUnderConstruction::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    set != nullptr ? set->AddPredictorVar(subModel, name, var) : single->AddPredictorVar(name, var);
}

INBVeskEncoder& ModelUnderConstruction::AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) {
    INBVeskEncoder* given = encoder.release();  // the model takes ownership even where it fails to store it
    set != nullptr ? set->AddEncoder(subModel, predictorIndex, given) : single->AddEncoder(given);
    return *given;
}

void ModelUnderConstruction::SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) {
    set != nullptr ? set->SetPredCounts(subModel, predictorIndex, counts)
                   : single->SetPredCounts(predictorIndex, counts);
}

void ModelUnderConstruction::SetTargetCounts(const std::vector<double>& counts) {
    set != nullptr ? set->SetTargetCounts(counts) : single->SetTargetCounts(counts);
}

void ModelUnderConstruction::SetModelName(const std::string& name) {
    if (set != nullptr) set->SetModelName(subModel, name);
}

void ModelUnderConstruction::SetAssessmentMean(double value) {
    if (set != nullptr) set->SetAssessmentMeanValues(subModel, value);
}

void ModelUnderConstruction::SetAssessmentStdDev(double value) {
    if (set != nullptr) set->SetAssessmentStdDevValues(subModel, value);
}

void ModelUnderConstruction::Finish(const std::string& targetName, const std::string* markedTarget) {
    if (set == nullptr) return;
    std::vector<ScoreDictVar*> vars;
    set->GetDictionary()->GetAllVars(vars);
    std::vector<std::string> names;
    for (const ScoreDictVar* var : vars) {
        std::string name = var->GetName();
        if (name != targetName) names.push_back(std::move(name));
    }
    set->SetPredictorVarNames(names);
    if (markedTarget != nullptr) set->SetAllModelNames(*markedTarget);
}

}  // namespace nbscore
