#pragma once

#include <memory>
#include <vector>

#include "framework/ScoreClsResult.h"

namespace nbscore::test {

/// A classification that tests fill by hand. Categories are appended as they come.
class FakeResult : public ScoreClsResult {
public:
    void SetPrediction(ScoreValue* value) override { prediction.reset(value); }
    const ScoreValue* GetPrediction() const override { return prediction.get(); }
    void AddAdvice(ResultAdvice) override {}
    std::vector<ResultAdvice> GetAdvice() override { return {}; }
    void RemoveAdvice() override {}
    const ScoreDictVar* GetTarget() const override { return nullptr; }
    void SetConfidence(double probability) override { confidence = probability; }
    double GetConfidence() const override { return confidence; }
    ResultType GetScoreResultType() override { return ScoreResult::NaiveBayesClsResult; }
    bool AddValuePercent(ScoreValue* value, double percent) override {
        percents.emplace_back(value, percent);
        return true;
    }
    double GetPercent(const ScoreValue*) const override { return -1.0; }
    const std::vector<ValuePercent>& GetAllValuePercent() const override { return percents; }

    void Clear() { percents.clear(); }

private:
    std::unique_ptr<ScoreValue> prediction;
    double confidence = -1.0;
    std::vector<ValuePercent> percents;
};

}  // namespace nbscore::test
