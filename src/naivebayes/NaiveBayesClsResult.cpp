#include "naivebayes/NaiveBayesClsResult.h"

#include <utility>

NaiveBayesClsResult::NaiveBayesClsResult(const ScoreDictVar* targetVariable) : target(targetVariable) {}

NaiveBayesClsResult::NaiveBayesClsResult(const NaiveBayesClsResult& other)
    : ScoreClsResult(other),
      target(other.target),
      valuePercents(other.valuePercents),
      advices(other.advices),
      confidence(other.confidence),
      finder(other.finder) {
    if (other.prediction != nullptr) prediction = other.prediction->Clone();
}

NaiveBayesClsResult& NaiveBayesClsResult::operator=(const NaiveBayesClsResult& other) {
    NaiveBayesClsResult copy(other);
    std::swap(target, copy.target);
    std::swap(prediction, copy.prediction);
    std::swap(valuePercents, copy.valuePercents);
    std::swap(advices, copy.advices);
    std::swap(confidence, copy.confidence);
    std::swap(finder, copy.finder);
    return *this;
}

NaiveBayesClsResult::~NaiveBayesClsResult() {
    delete prediction;
}

void NaiveBayesClsResult::SetPrediction(ScoreValue* value) {
    prediction = value;
}

const ScoreValue* NaiveBayesClsResult::GetPrediction() const {
    return prediction;
}

void NaiveBayesClsResult::AddAdvice(ResultAdvice advice) {
    advices.push_back(std::move(advice));
}

std::vector<ResultAdvice> NaiveBayesClsResult::GetAdvice() {
    return advices;
}

void NaiveBayesClsResult::RemoveAdvice() {
    advices.clear();
}

const ScoreDictVar* NaiveBayesClsResult::GetTarget() const {
    return target;
}

void NaiveBayesClsResult::SetConfidence(double probability) {
    confidence = probability;
}

double NaiveBayesClsResult::GetConfidence() const {
    return confidence;
}

ScoreResult::ResultType NaiveBayesClsResult::GetScoreResultType() {
    return ScoreResult::NaiveBayesClsResult;
}

bool NaiveBayesClsResult::AddValuePercent(ScoreValue* value, double percent) {
    const std::size_t position = finder.FindNext(valuePercents, value);
    if (position == ValuePercentFinder::notFound) {
        valuePercents.emplace_back(value, percent);
    } else {
        valuePercents[position].second = percent;
    }
    return true;
}

double NaiveBayesClsResult::GetPercent(const ScoreValue* value) const {
    const std::size_t position = finder.Find(valuePercents, value);
    return position == ValuePercentFinder::notFound ? -1.0 : valuePercents[position].second;
}

const std::vector<ScoreClsResult::ValuePercent>& NaiveBayesClsResult::GetAllValuePercent() const {
    return valuePercents;
}

void NaiveBayesClsResult::RemoveValuePercent() {
    valuePercents.clear();
    finder.Reset();
}
