#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/BaseModel.h"
#include "framework/NumericValue.h"
#include "framework/ScoreClsResult.h"
#include "framework/StringValue.h"

namespace nbscore::test {

/// A variable of numbers, with no declared values.
inline std::unique_ptr<BaseDictVar> MakeNumberField(const std::string& name) {
    return std::make_unique<BaseDictVar>(name, ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
}

/// A variable of texts with these declared values.
inline std::unique_ptr<BaseDictVar> MakeTextField(const std::string& name,
                                                  const std::vector<std::string>& values = {}) {
    auto field = std::make_unique<BaseDictVar>(name, ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    for (const std::string& value : values) {
        field->AddValidValue(std::make_unique<StringValue>(value), "");
    }
    return field;
}

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

/// A model over fields and a scoring rule that a test makes up.
class FakeModel : public BaseModel {
public:
    using Rule = std::function<void(const ScoreCaseRecord&, FakeResult&)>;

    FakeModel() {
        auto owned = std::make_unique<BaseDictionary>();
        dictionary = owned.get();
        SetScoreDictionary(owned.release());
    }

    void AddField(std::unique_ptr<BaseDictVar> field, VarRole role) {
        const std::string name = field->GetName();
        dictionary->AddVar(name, field.release());
        if (role == NoRole) return;
        SetVarRole(dictionary->GetVar(name), role);
    }
    void SetRule(Rule scoringRule) { rule = std::move(scoringRule); }

    void SetPredictionOnly(bool only) override { predictionOnly = only; }
    bool GetPredictionOnly() const override { return predictionOnly; }
    ModelType GetModelType() override { return NaiveBayesModel; }
    void Display(std::ostream&) const override {}

    ScoreDictionary* GetVarsOfRole(VarRole role) const override {
        auto found = std::make_unique<BaseDictionary>();
        std::vector<ScoreDictVar*> vars;
        dictionary->GetAllVars(vars);
        bool any = false;
        for (const ScoreDictVar* var : vars) {
            if (GetVarRole(var) == role) any = found->AddVar(var->GetName(), var->Clone());
        }
        return any ? found.release() : nullptr;
    }

    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool) override {
        if (result == nullptr) result = new FakeResult;
        rule(*record, static_cast<FakeResult&>(*result));
        return {};
    }

private:
    BaseDictionary* dictionary;
    Rule rule;
    bool predictionOnly = false;
};

}  // namespace nbscore::test
