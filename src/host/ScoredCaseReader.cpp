#include "host/ScoredCaseReader.h"

#include "host/Classification.h"
#include "host/SubModelNames.h"
#include "host/SubModelScores.h"

namespace nbscore {

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
