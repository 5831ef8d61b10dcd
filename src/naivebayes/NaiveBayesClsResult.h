#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/ScoreClsResult.h"
#include "naivebayes/ValuePercentFinder.h"

/// The result of a Naive Bayes classification.
///
/// Handing a result back for the next case keeps its entries in the order of the first case and updates them
/// in place, each in constant time. The category values are borrowed: the result must not outlive the model.
class NAIVEBAYES_API NaiveBayesClsResult : public ScoreClsResult {
public:
    /// @param targetVariable borrowed; may be null.
    explicit NaiveBayesClsResult(const ScoreDictVar* targetVariable);
    /// A copy has a prediction of its own, so that each of the two deletes what it owns; a result that is
    /// assigned to deletes the prediction it had. The category values are shared: they are borrowed anyway.
    NaiveBayesClsResult(const NaiveBayesClsResult& other);
    NaiveBayesClsResult& operator=(const NaiveBayesClsResult& other);
    ~NaiveBayesClsResult() override;

    void SetPrediction(ScoreValue* value) override;
    const ScoreValue* GetPrediction() const override;
    void AddAdvice(ResultAdvice advice) override;
    std::vector<ResultAdvice> GetAdvice() override;
    void RemoveAdvice() override;
    const ScoreDictVar* GetTarget() const override;
    void SetConfidence(double probability) override;
    double GetConfidence() const override;
    ResultType GetScoreResultType() override;
    bool AddValuePercent(ScoreValue* value, double percent) override;
    double GetPercent(const ScoreValue* value) const override;
    const std::vector<ValuePercent>& GetAllValuePercent() const override;

    /// Empties the list of categories; the values themselves are not deleted.
    void RemoveValuePercent();

private:
    const ScoreDictVar* target;
    ScoreValue* prediction = nullptr;
    std::vector<ValuePercent> valuePercents;
    std::vector<ResultAdvice> advices;
    double confidence = -1.0;
    ValuePercentFinder finder;
};
