// How SelfLearningModel scores one case.

#include <cstddef>
#include <memory>
#include <utility>

#include "naivebayes/Existing.h"
#include "naivebayes/PredictorValues.h"
#include "naivebayes/Probabilities.h"
#include "naivebayes/ResultReuse.h"
#include "selflearning/SelfLearningModel.h"
#include "selflearning/SelfLearningResult.h"

namespace {

using Descriptors = std::vector<SelfLearningResult::ModelDescriptor>;
using DescriptorsValue = VectorValue<SelfLearningResult::ModelDescriptor>;

/// The target's second category is always the one that is scored.
constexpr std::size_t scoredCategory = 1;

/// The caller's result when its type is that of a single classifier's result; otherwise a new one in its place.
/// The test is against that type and not against this model's own, deliberately: a SelfLearningResult that is handed
/// back is replaced by a new object on every call, which is part of the interface.
ScoreResult& ResultToFill(ScoreResult*& result, const ScoreDictVar* target) {
    if (result != nullptr && result->GetScoreResultType() == ScoreResult::NaiveBayesClsResult) return *result;
    return nbscore::ReplaceResult<SelfLearningResult>(result, target);
}

void SetDescriptors(ScoreResult& result, Descriptors descriptors) {
    if (auto* list = dynamic_cast<DescriptorsValue*>(nbscore::ChangeablePrediction(result))) {
        list->GetVectorValue() = std::move(descriptors);
        return;
    }
    nbscore::ReplacePrediction(result, std::make_unique<DescriptorsValue>(std::move(descriptors)));
}

}  // namespace

MCScore::MCStatus SelfLearningModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result,
                                              bool derivedInRecord) {
    PrepareScoring(record, derivedInRecord);
    ScoreResult& filled = ResultToFill(result, targetVar);
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);

    MCScore::MCStatus status;
    Descriptors descriptors(static_cast<std::size_t>(numOfModels));
    for (int model = 0; model < numOfModels; ++model) {
        const auto m = static_cast<std::size_t>(model);
        double score = -1.0;
        status = GetScoreFromModel(record, derivedRecord, score, model);
        descriptors[m] = {modelNames[m], score, assessmentMeanValues[m], assessmentStdDevValues[m]};
    }
    SetDescriptors(filled, std::move(descriptors));
    return status;
}

double SelfLearningModel::ScoreSubModel(const ScoreCaseRecord* record, int subModel, bool derivedInRecord) {
    PrepareScoring(record, derivedInRecord);
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);
    double score = -1.0;
    GetScoreFromModel(record, derivedRecord, score, subModel);
    return score;
}

MCScore::MCStatus SelfLearningModel::GetScoreFromModel(const ScoreCaseRecord* record,
                                                       const ScoreCaseRecord* derivedRecord, double& score,
                                                       int model) const {
    const auto m = static_cast<std::size_t>(model);
    const std::vector<double>& priors = targetProbabilitiesByModel[m];
    score = priors[scoredCategory];
    if (priors[0] == 0.0 || priors[scoredCategory] == 0.0) return MCScore::MCStatus();

    const nbscore::EncodedCase encoded =
        nbscore::EncodePredictors(nbscore::Existing(record), derivedRecord, predictorNamesByModel[m].size(),
                                  predictorVarsByModel[m], encodersByModel[m]);
    if (encoded.usable < 1) return MCScore::MCStatus();

    // A zero sum is not guarded: the score is what the division gives.
    std::vector<double> joint(targetCategories.size());
    double sum = 0.0;
    for (std::size_t k = 0; k < joint.size(); ++k) {
        joint[k] = ComputePXYPY(model, encoded.codes, static_cast<int>(k));
        sum += joint[k];
    }
    score = joint[scoredCategory] / sum;
    return MCScore::MCStatus();
}

void SelfLearningModel::PrepareScoring(const ScoreCaseRecord* record, bool derivedInRecord) {
    if (!dictVarIndexSetUp.IsDone() && nbscore::Existing(record).IsIndexed())
        SetUpDictVarIndex(record, derivedInRecord);
    ComputeTargetProbabilities();
}

void SelfLearningModel::ComputeTargetProbabilities() {
    targetProbabilitiesComputed.Do([this] {
        targetProbabilitiesByModel.resize(targetCountsByModel.size());
        for (std::size_t m = 0; m < targetCountsByModel.size(); ++m)
            targetProbabilitiesByModel[m] = GetTargetProbabilities(m);
    });
}

/// What they are once the first case has been scored, and what they will be before that.
std::vector<double> SelfLearningModel::GetTargetProbabilities(std::size_t model) const {
    if (targetProbabilitiesComputed.IsDone()) return targetProbabilitiesByModel[model];
    return nbscore::SmoothedPriors(targetCountsByModel[model], thresholds[model]);
}

double SelfLearningModel::ComputePXYPY(int model, const std::vector<double>& codes, int targetIndex) const {
    const auto m = static_cast<std::size_t>(model);
    const double prior = targetProbabilitiesByModel[m][static_cast<std::size_t>(targetIndex)];
    return nbscore::JointProbability(prior, predCountsByModel[m], codes, targetIndex);
}

void SelfLearningModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord) {
    dictVarIndexSetUp.Do([&] {
        nbscore::RememberRecordPositions(*record, predictorVarNames, GetDictionary(), GetTransformationDictionary(),
                                         derivedInRecord);
    });
}
