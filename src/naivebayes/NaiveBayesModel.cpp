#include "naivebayes/NaiveBayesModel.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "naivebayes/ClassifierDescriber.h"
#include "naivebayes/ClassifierTabulator.h"
#include "naivebayes/DeclaredCategories.h"
#include "naivebayes/PredictorValues.h"
#include "naivebayes/Probabilities.h"

NaiveBayesModel::NaiveBayesModel() = default;

NaiveBayesModel::~NaiveBayesModel() = default;

void NaiveBayesModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool NaiveBayesModel::GetPredictionOnly() const {
    return predictionOnly;
}

ScoreModel::ModelType NaiveBayesModel::GetModelType() {
    return ScoreModel::NaiveBayesModel;
}

ScoreDictionary* NaiveBayesModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, targetVar, role);
}

void NaiveBayesModel::SetTargetVar(const ScoreDictVar* target) {
    targetVar = target;
    nbscore::TakeDeclaredCategories(target, targetValues);
}

void NaiveBayesModel::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    predictorVarNames.push_back(name);
    predictorVars.push_back(var);
}

void NaiveBayesModel::AddEncoder(INBVeskEncoder* encoder) {
    encoders.push_back(std::unique_ptr<INBVeskEncoder>(encoder));
}

void NaiveBayesModel::SetPredCounts(int /*predictorIndex*/, const NBayesInputBase::Matrix& counts) {
    auto table = std::make_unique<NBayesInputBase>();
    table->SetCounts(threshold, counts);
    predCounts.push_back(std::move(table));
}

void NaiveBayesModel::SetTargetCounts(const std::vector<double>& counts) {
    targetCounts = counts;
    ComputeTargetProbabilities();
}

void NaiveBayesModel::SetPredictorVarNames(const std::vector<std::string>& names) {
    predictorVarNames = names;
}

std::vector<std::string> NaiveBayesModel::GetPredictorVarNames() const {
    return predictorVarNames;
}

void NaiveBayesModel::SetThreshold(double newThreshold) {
    threshold = newThreshold;
}

void NaiveBayesModel::SetNeedDerivedPredictor(bool need) {
    needDerivedPredictor = need;
}

bool NaiveBayesModel::NeedDerivedPredictor() const {
    return needDerivedPredictor;
}

nbscore::ModelDescription NaiveBayesModel::Describe() const {
    return {.target = targetVar == nullptr ? std::string() : targetVar->GetName(),
            .targetCategories = nbscore::DescribeCategories(targetValues),
            .classifiers = {nbscore::DescribeClassifier(GetParts(), threshold)}};
}

nbscore::ModelTables NaiveBayesModel::GetTables() const {
    return {.readsDerivedFields = needDerivedPredictor,
            .target = targetVar,
            .targetCategories = {targetValues.begin(), targetValues.end()},
            .classifiers = {nbscore::TabulateClassifier(GetParts(), targetProbabilities)}};
}

nbscore::ClassifierParts NaiveBayesModel::GetParts() const {
    return {.target = targetVar,
            .targetCategories = targetValues,
            .targetCounts = targetCounts,
            .predictorNames = predictorVarNames,
            .predictorVars = predictorVars,
            .encoders = encoders,
            .tables = predCounts};
}

int NaiveBayesModel::ComputeTargetProbabilities() {
    targetProbabilities = nbscore::SmoothedPriors(targetCounts, threshold);
    return static_cast<int>(targetProbabilities.size());
}

double NaiveBayesModel::ComputePXYPY(const std::vector<double>& codes, int targetIndex) const {
    const double prior = targetProbabilities[static_cast<std::size_t>(targetIndex)];
    return nbscore::JointProbability(prior, predCounts, codes, targetIndex);
}

void NaiveBayesModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord) {
    dictVarIndexReady.Do([&] {
        nbscore::RememberRecordPositions(*record, predictorVarNames, GetDictionary(), GetTransformationDictionary(),
                                         derivedInRecord);
    });
}
