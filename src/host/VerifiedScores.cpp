#include "host/VerifiedScores.h"

#include "host/Classification.h"
#include "host/SubModelScores.h"

namespace nbscore {

VerifiedScores::VerifiedScores(const ScoreDictVar& target, std::optional<std::size_t> subModels)
    : numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage),
      numSubModels(subModels),
      probabilities(target) {}

VerifiedCell VerifiedScores::Get(const ScoreResult& result, const VerifiedValue& value, std::size_t modelIndex) {
    if (numSubModels) return VerifiedCell::OfNumber(RequireSubModelScores(result, *numSubModels).at(modelIndex).score);
    const ScoreClsResult& classification = RequireClassification(result);
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
