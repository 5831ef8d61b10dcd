#include "verify/VerifiedScores.h"

#include "output/HostError.h"
#include "table/ModelResults.h"
#include "table/SubModels.h"

namespace nbscore {

VerifiedScores::VerifiedScores(ScoreModel& scoredModel, std::optional<std::size_t> subModels)
    : model(scoredModel),
      subModelScoring(dynamic_cast<SubModelScoring*>(&scoredModel)),
      numericTarget(scoredModel.GetTargetVar()->GetStorageType() == ScoreDictVar::NumericStorage),
      numSubModels(subModels),
      probabilities(*scoredModel.GetTargetVar()) {}

void VerifiedScores::Score(const ScoreCaseRecord& record, std::size_t subModel) {
    if (numSubModels) {
        subModelScore = ScoreSubModel(record, subModel);
    } else {
        scored = &result.Score(model, record);
    }
}

double VerifiedScores::ScoreSubModel(const ScoreCaseRecord& record, std::size_t subModel) {
    if (subModelScoring == nullptr) {
        return RequireSubModelScores(result.Score(model, record), *numSubModels).at(subModel).score;
    }
    try {
        return subModelScoring->ScoreSubModel(&record, static_cast<int>(subModel), false);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
}

VerifiedCell VerifiedScores::Get(const VerifiedValue& value) {
    if (numSubModels) return VerifiedCell::OfNumber(subModelScore);
    const ScoreClsResult& classification = RequireClassification(*scored);
    switch (value.kind) {
        case VerifiedValue::Kind::Confidence:
            return VerifiedCell::OfNumber(classification.GetConfidence());
        case VerifiedValue::Kind::Probability:
            return VerifiedCell::OfNumber(probabilities.Arrange(classification).at(value.category));
        default:
            break;
    }
    const ScoreValue& prediction = *classification.GetPrediction();
    return numericTarget ? VerifiedCell::OfNumber(prediction.GetDouble())
                         : VerifiedCell::OfText(prediction.GetString());
}

bool VerifiedScores::IsNumber(const VerifiedValue& value) const {
    return value.kind != VerifiedValue::Kind::Prediction || numericTarget;
}

}  // namespace nbscore
