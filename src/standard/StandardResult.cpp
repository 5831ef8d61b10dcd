#include "standard/StandardResult.h"

#include "naivebayes/ScoringCall.h"

StandardResult::StandardResult(const ScoreModel& scoringModel, const ScoreDictVar* targetVariable)
    : NaiveBayesClsResult(targetVariable), model(&scoringModel) {}

StandardResult::~StandardResult() = default;

const nbscore::CaseFacts& StandardResult::GetFacts() const {
    return facts;
}

void StandardResult::Empty() {
    nbscore::ReplacePrediction(*this, nullptr);
    RemoveValuePercent();
    SetConfidence(-1.0);
}
