#pragma once

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/MCMV.h"
#include "support/FakeModel.h"
#include "table/ModelResults.h"

namespace nbscore::test {

/// The result of a set of sub-models, filled by hand.
class FakeSetResult : public ScoreResult {
public:
    FakeSetResult() = default;
    explicit FakeSetResult(std::vector<SubModelScore> scores)
        : prediction(std::make_unique<VectorValue<SubModelScore>>(std::move(scores))) {}

    void SetPrediction(ScoreValue* value) override { prediction.reset(value); }
    const ScoreValue* GetPrediction() const override { return prediction.get(); }
    void AddAdvice(ResultAdvice) override {}
    std::vector<ResultAdvice> GetAdvice() override { return {}; }
    void RemoveAdvice() override {}
    const ScoreDictVar* GetTarget() const override { return nullptr; }
    void SetConfidence(double) override {}
    double GetConfidence() const override { return -1.0; }
    ResultType GetScoreResultType() override { return ScoreResult::SelfLearningResult; }

private:
    std::unique_ptr<ScoreValue> prediction;
};

/// A set whose sub-models give every case the same scores.
class FakeSet : public FakeModel {
public:
    FakeSet() = default;
    explicit FakeSet(std::vector<SubModelScore> everyCase) : scores(std::move(everyCase)) {}

    ModelType GetModelType() override { return SelfLearningModel; }
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool) override {
        indexedCases += record->IsIndexed() ? 1 : 0;
        delete result;
        result = new FakeSetResult(scores);
        return {};
    }

    std::vector<SubModelScore> scores;
    int indexedCases = 0;
};

/// One sub-model's answer, without assessment figures.
inline SubModelScore MakeScore(const std::string& name, double score) {
    return {name, score, MCMV::gMissingValue, MCMV::gMissingValue};
}

}  // namespace nbscore::test
