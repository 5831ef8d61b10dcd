#include "selflearning/SelfLearningModel.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "framework/NumericValue.h"
#include "naivebayes/ClassifierDescriber.h"
#include "naivebayes/ClassifierTabulator.h"
#include "naivebayes/DeclaredCategories.h"
#include "naivebayes/Existing.h"
#include "naivebayes/PredictorValues.h"

SelfLearningModel::SelfLearningModel() = default;

SelfLearningModel::~SelfLearningModel() = default;

void SelfLearningModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool SelfLearningModel::GetPredictionOnly() const {
    return predictionOnly;
}

// Inside the class the plain name would be the class itself; the enumerator of that name is the base's.
ScoreModel::ModelType SelfLearningModel::GetModelType() {
    return ScoreModel::SelfLearningModel;
}

ScoreDictionary* SelfLearningModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, targetVar, role);
}

void SelfLearningModel::SetNumOfModels(int count) {
    numOfModels = count;
    const auto size = static_cast<std::size_t>(count);
    predCountsByModel.resize(size);
    encodersByModel.resize(size);
    predictorNamesByModel.resize(size);
    predictorVarsByModel.resize(size);
    modelNames.assign(size, std::string());
    assessmentMeanValues.assign(size, NumericValue::GetSysmisValue());
    assessmentStdDevValues.assign(size, NumericValue::GetSysmisValue());
}

void SelfLearningModel::SetModelName(int model, const std::string& name) {
    if (HasModel(model)) modelNames[static_cast<std::size_t>(model)] = name;
}

void SelfLearningModel::SetAssessmentMeanValues(int model, double value) {
    if (HasModel(model)) assessmentMeanValues[static_cast<std::size_t>(model)] = value;
}

void SelfLearningModel::SetAssessmentStdDevValues(int model, double value) {
    if (HasModel(model)) assessmentStdDevValues[static_cast<std::size_t>(model)] = value;
}

void SelfLearningModel::AddPredictorVar(int model, const std::string& name, const ScoreDictVar* var) {
    predictorNamesByModel[static_cast<std::size_t>(model)].push_back(name);
    predictorVarsByModel[static_cast<std::size_t>(model)].push_back(var);
}

void SelfLearningModel::AddEncoder(int model, int /*predictorIndex*/, INBVeskEncoder* encoder) {
    if (!HasModel(model)) return;
    encodersByModel[static_cast<std::size_t>(model)].push_back(std::unique_ptr<INBVeskEncoder>(encoder));
}

void SelfLearningModel::SetPredCounts(int model, int /*predictorIndex*/, const NBayesInputBase::Matrix& counts) {
    if (!HasModel(model)) return;
    const auto index = static_cast<std::size_t>(model);
    auto table = std::make_unique<NBayesInputBase>();
    table->SetCounts(thresholds[index], counts);
    predCountsByModel[index].push_back(std::move(table));
}

void SelfLearningModel::SetTargetCounts(const std::vector<double>& counts) {
    targetCountsByModel.push_back(counts);
}

void SelfLearningModel::SetThreshold(double threshold) {
    thresholds.push_back(threshold);
}

void SelfLearningModel::SetTargetVar(const ScoreDictVar* target) {
    targetVar = target;
    nbscore::TakeDeclaredCategories(target, targetCategories);
}

bool SelfLearningModel::SetAllModelNames(const std::string& varName) {
    if (GetDictionary() == nullptr) return false;
    const ScoreDictVar* var = GetDictionary()->GetVar(varName);
    const ScoreValueLabelSet* declared = var == nullptr ? nullptr : var->GetValueLabelSet();
    if (declared == nullptr) return false;
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        allModelNames.push_back(nbscore::Existing(label.GetValue()).GetString());
    return true;
}

std::vector<std::string> SelfLearningModel::GetAllModelNames() const {
    return allModelNames;
}

nbscore::ModelDescription SelfLearningModel::Describe() const {
    nbscore::ModelDescription description;
    if (targetVar != nullptr) description.target = targetVar->GetName();
    description.targetCategories = nbscore::DescribeCategories(targetCategories);
    for (std::size_t m = 0; m < modelNames.size(); ++m) {
        // A set may lack what its sub-models need: it is described all the same.
        if (m >= thresholds.size() || m >= targetCountsByModel.size()) break;
        nbscore::ClassifierDescription subModel = nbscore::DescribeClassifier(GetParts(m), thresholds[m]);
        subModel.name = modelNames[m];
        subModel.assessmentMean = assessmentMeanValues[m];
        subModel.assessmentStdDev = assessmentStdDevValues[m];
        description.classifiers.push_back(std::move(subModel));
    }
    return description;
}

nbscore::ModelTables SelfLearningModel::GetTables() const {
    nbscore::ModelTables tables;
    tables.readsDerivedFields = needDerivedPredictor;
    tables.isSet = true;
    tables.target = targetVar;
    tables.targetCategories.assign(targetCategories.begin(), targetCategories.end());
    for (std::size_t m = 0; m < modelNames.size(); ++m) {
        tables.classifiers.push_back(nbscore::TabulateClassifier(GetParts(m), GetTargetProbabilities(m)));
        tables.classifiers.back().name = modelNames[m];
    }
    return tables;
}

nbscore::ClassifierParts SelfLearningModel::GetParts(std::size_t model) const {
    return {.target = targetVar,
            .targetCategories = targetCategories,
            .targetCounts = targetCountsByModel[model],
            .predictorNames = predictorNamesByModel[model],
            .predictorVars = predictorVarsByModel[model],
            .encoders = encodersByModel[model],
            .tables = predCountsByModel[model]};
}

void SelfLearningModel::SetPredictorVarNames(const std::vector<std::string>& names) {
    predictorVarNames = names;
}

std::vector<std::string> SelfLearningModel::GetPredictorVarNames() const {
    return predictorVarNames;
}

void SelfLearningModel::SetNeedDerivedPredictor(bool need) {
    needDerivedPredictor = need;
}

bool SelfLearningModel::NeedDerivedPredictor() const {
    return needDerivedPredictor;
}
