#include "selflearning/SelfLearningResult.h"

#include <utility>

SelfLearningResult::SelfLearningResult(const ScoreDictVar* targetVariable) : target(targetVariable) {}

SelfLearningResult::~SelfLearningResult() {
    delete prediction;
}

void SelfLearningResult::SetPrediction(ScoreValue* value) {
    prediction = value;
}

const ScoreValue* SelfLearningResult::GetPrediction() const {
    return prediction;
}

void SelfLearningResult::AddAdvice(ResultAdvice advice) {
    advices.push_back(std::move(advice));
}

std::vector<ResultAdvice> SelfLearningResult::GetAdvice() {
    return advices;
}

void SelfLearningResult::RemoveAdvice() {
    advices.clear();
}

const ScoreDictVar* SelfLearningResult::GetTarget() const {
    return target;
}

void SelfLearningResult::SetConfidence(double probability) {
    confidence = probability;
}

double SelfLearningResult::GetConfidence() const {
    return confidence;
}

// Inside the class the plain name would be the class itself; the enumerator of that name is the base's.
ScoreResult::ResultType SelfLearningResult::GetScoreResultType() {
    return ScoreResult::SelfLearningResult;
}
