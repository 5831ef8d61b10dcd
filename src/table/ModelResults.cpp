#include "table/ModelResults.h"

#include <algorithm>
#include <cmath>

#include "output/HostError.h"

namespace nbscore {

const ScoreResult& ReusedResult::Score(ScoreModel& model, const ScoreCaseRecord& record) {
    try {
        model.GetScore(&record, result, false);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
    if (result == nullptr) throw UnscorableModelError("The model gave no result for a case.");
    return *result;
}

const ScoreClsResult& RequireClassification(const ScoreResult& result) {
    const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result);
    if (classification == nullptr) throw UnscorableModelError("The model's results are no classifications.");
    if (classification->GetPrediction() == nullptr) {
        throw UnscorableModelError("The model predicted no value for a case.");
    }
    return *classification;
}

bool HasNonFiniteNumber(const ScoreResult& result) {
    if (const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result)) {
        if (!std::isfinite(classification->GetConfidence())) return true;
        return std::ranges::any_of(classification->GetAllValuePercent(),
                                   [](const auto& entry) { return !std::isfinite(entry.second); });
    }
    const std::vector<SubModelScore>* const scores = FindSubModelScores(result);
    return scores != nullptr &&
           std::ranges::any_of(*scores, [](const SubModelScore& entry) { return !std::isfinite(entry.score); });
}

CategoryProbabilities::CategoryProbabilities(const ScoreDictVar& target) {
    const ScoreValueLabelSet* const labels = target.GetValueLabelSet();
    if (labels == nullptr) return;
    for (const ScoreValueLabel& label : labels->GetValueLabels()) {
        std::string name = label.GetValue()->GetString();
        if (positions.emplace(name, names.size()).second) names.push_back(std::move(name));
    }
    probabilities.assign(names.size(), MCMV::gMissingValue);
}

const std::vector<double>& CategoryProbabilities::Arrange(const ScoreClsResult& result) {
    const std::vector<ScoreClsResult::ValuePercent>& percents = result.GetAllValuePercent();
    if (!HasKnownEntries(percents)) LearnEntries(percents);
    for (std::size_t i = 0; i < percents.size(); ++i) {
        if (entries[i].category != noCategory) probabilities[entries[i].category] = percents[i].second;
    }
    return probabilities;
}

bool CategoryProbabilities::HasKnownEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) const {
    return std::equal(entries.begin(), entries.end(), percents.begin(), percents.end(),
                      [](const Entry& entry, const auto& percent) { return entry.value == percent.first; });
}

void CategoryProbabilities::LearnEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) {
    entries.clear();
    probabilities.assign(names.size(), MCMV::gMissingValue);
    for (const auto& [value, probability] : percents) {
        const auto position = positions.find(value->GetString());
        entries.push_back({value, position == positions.end() ? noCategory : position->second});
    }
}

ScoredCaseReader::ScoredCaseReader(ScoreModel& model, bool onlyPrediction) : predictionOnly(onlyPrediction) {
    if (const auto names = FindSubModelNames(model)) {
        numSubModels = names->size();
    } else {
        probabilities.emplace(*model.GetTargetVar());
    }
}

ScoredCase ScoredCaseReader::Read(const ScoreResult& result) {
    ScoredCase scored;
    if (numSubModels) {
        scored.subModels = RequireSubModelScores(result, *numSubModels);
        return scored;
    }
    const ScoreClsResult& classification = RequireClassification(result);
    scored.prediction = classification.GetPrediction();
    scored.confidence = classification.GetConfidence();
    if (!predictionOnly) scored.probabilities = probabilities->Arrange(classification);
    return scored;
}

}  // namespace nbscore
