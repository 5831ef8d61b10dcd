#include "translator/NaiveBayesUnderConstruction.h"

#include <algorithm>

namespace nbscore {

NaiveBayesUnderConstruction::NaiveBayesUnderConstruction() : model(std::make_unique<NaiveBayesModel>()) {}
NaiveBayesUnderConstruction::~NaiveBayesUnderConstruction() = default;

ScoreModel& NaiveBayesUnderConstruction::GetModel() {
    return *model;
}

std::unique_ptr<ScoreModel> NaiveBayesUnderConstruction::Release() {
    return std::move(model);
}

bool NaiveBayesUnderConstruction::IsSelfLearning() const {
    return false;
}

int NaiveBayesUnderConstruction::TakeModelElements(int inDocument) {
    return std::min(inDocument, 1);
}

void NaiveBayesUnderConstruction::BeginSubModel(int /*modelIndex*/) {}

void NaiveBayesUnderConstruction::SetThreshold(double threshold) {
    model->SetThreshold(threshold);
}

void NaiveBayesUnderConstruction::SetTargetVar(const ScoreDictVar* target) {
    model->SetTargetVar(target);
}

void NaiveBayesUnderConstruction::SetNeedDerivedPredictor(bool need) {
    model->SetNeedDerivedPredictor(need);
}

void NaiveBayesUnderConstruction::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    model->AddPredictorVar(name, var);
}

INBVeskEncoder& NaiveBayesUnderConstruction::AddEncoder(int /*predictorIndex*/,
                                                        std::unique_ptr<INBVeskEncoder> encoder) {
    INBVeskEncoder* given = encoder.release();  // the model takes ownership even where it fails to store it
    model->AddEncoder(given);
    return *given;
}

void NaiveBayesUnderConstruction::SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) {
    model->SetPredCounts(predictorIndex, counts);
}

void NaiveBayesUnderConstruction::SetTargetCounts(const std::vector<double>& counts) {
    model->SetTargetCounts(counts);
}

}  // namespace nbscore
