#include "host/SubModelScores.h"

#include "framework/CountedNoun.h"
#include "host/HostError.h"

namespace nbscore {

const std::vector<SubModelScore>* FindSubModelScores(const ScoreResult& result) {
    const auto* const scores = dynamic_cast<const VectorValue<SubModelScore>*>(result.GetPrediction());
    return scores == nullptr ? nullptr : &scores->GetVectorValue();
}

const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result) {
    const std::vector<SubModelScore>* const scores = FindSubModelScores(result);
    if (scores == nullptr) throw UnscorableModelError("The model's results are no scores of sub-models.");
    return *scores;
}

const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result, std::size_t numSubModels) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result);
    if (scores.size() == numSubModels) return scores;
    throw UnscorableModelError("The model gave " + CountedNoun(scores.size(), "score") + " for its " +
                               CountedNoun(numSubModels, "sub-model") + ".");
}

}  // namespace nbscore
