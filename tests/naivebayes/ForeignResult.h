#pragma once

#include <memory>
#include <vector>

#include "framework/ScoreResult.h"

namespace nbscore::test {

/// A result of some type that counts how often its kind is deleted.
class ForeignResult : public ScoreResult {
public:
    ForeignResult(int resultType, int& deletions) : type(resultType), deleted(&deletions) {}
    ~ForeignResult() override { ++*deleted; }
    void SetPrediction(ScoreValue* value) override {
        static_cast<void>(prediction.release());  // as every result: an earlier one is not deleted
        prediction.reset(value);
    }
    const ScoreValue* GetPrediction() const override { return prediction.get(); }
    void AddAdvice(ResultAdvice) override {}
    std::vector<ResultAdvice> GetAdvice() override { return {}; }
    void RemoveAdvice() override {}
    const ScoreDictVar* GetTarget() const override { return nullptr; }
    void SetConfidence(double) override {}
    double GetConfidence() const override { return 0.0; }
    ResultType GetScoreResultType() override { return static_cast<ResultType>(type); }

private:
    int type;
    int* deleted;
    std::unique_ptr<ScoreValue> prediction;
};

}  // namespace nbscore::test
