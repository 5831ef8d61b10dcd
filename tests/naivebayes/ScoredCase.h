#pragma once

#include <map>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "naivebayes/NaiveBayesModel.h"

namespace nbscore::test {

/// A threshold, and with it the priors of two target categories that were counted three times and once.
inline constexpr double smallThreshold = 0.001;
inline constexpr double priorYes = (smallThreshold + 3) / (2 * smallThreshold + 1 / smallThreshold);
inline constexpr double priorNo = (smallThreshold + 1) / (2 * smallThreshold + 1 / smallThreshold);

/// A record whose values are found by name only.
class NamedRecord : public ScoreCaseRecord {
public:
    NamedRecord() = default;
    explicit NamedRecord(const std::map<std::string, std::string>& texts) {
        for (const auto& [name, text] : texts)
            values[name] = std::make_unique<StringValue>(text);
    }
    void Set(const std::string& name, std::unique_ptr<ScoreValue> value) { values[name] = std::move(value); }

    const ScoreValue* GetValueByIndex(int) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string& name) const override {
        const auto entry = values.find(name);
        return entry == values.end() ? nullptr : entry->second.get();
    }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }

private:
    std::map<std::string, std::unique_ptr<ScoreValue>> values;
};

/// Fails for want of memory at the second question for a position.
class FailingRecord : public BaseCaseRecord {
public:
    using BaseCaseRecord::BaseCaseRecord;
    int GetVarIndex(const std::string& name) const override {
        if (++asked == 2) throw std::bad_alloc();
        return BaseCaseRecord::GetVarIndex(name);
    }

private:
    mutable int asked = 0;
};

/// A record of texts, given by name.
inline NamedRecord TextRecord(const std::map<std::string, std::string>& texts) {
    NamedRecord record;
    for (const auto& [name, text] : texts)
        record.Set(name, std::make_unique<StringValue>(text));
    return record;
}

/// What scoring a case gave, read back through the result's interface.
struct ScoredCase {
    std::string prediction;
    double confidence = 0.0;
    std::vector<double> probabilities;
};

inline ScoredCase Read(const ScoreResult& result) {
    const auto& classified = dynamic_cast<const ScoreClsResult&>(result);
    ScoredCase scored;
    scored.prediction = classified.GetPrediction()->GetString();
    scored.confidence = classified.GetConfidence();
    for (const auto& [value, percent] : classified.GetAllValuePercent())
        scored.probabilities.push_back(percent);
    return scored;
}

inline ScoredCase Score(NaiveBayesModel& model, const ScoreCaseRecord& record, bool derivedInRecord = false) {
    ScoreResult* result = nullptr;
    model.GetScore(&record, result, derivedInRecord);
    const std::unique_ptr<ScoreResult> owned(result);
    return Read(*owned);
}

/// Scores a case of texts, given by name.
inline ScoredCase ScoreTexts(NaiveBayesModel& model, const std::map<std::string, std::string>& texts) {
    return Score(model, TextRecord(texts));
}

}  // namespace nbscore::test
