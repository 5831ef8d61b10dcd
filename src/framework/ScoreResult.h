#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/ResultAdvice.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreValue.h"

/// What scoring one case gave.
///
/// A result belongs to the caller, who hands it back for the next case so that it can be filled again. It borrows
/// the target variable, and may borrow the target's declared values, from the model's dictionary: it must not
/// outlive the model. A result is used by one thread at a time.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreResult {
public:
    enum ResultType { NaiveBayesClsResult = 10, SelfLearningResult = 16 };

    virtual ~ScoreResult();

    /// Stores the predicted value and takes ownership of it. An earlier prediction is not deleted: it must have
    /// been taken out before.
    virtual void SetPrediction(ScoreValue* value) = 0;
    /// The predicted value, null until one was set; it stays the result's own.
    virtual const ScoreValue* GetPrediction() const = 0;
    virtual void AddAdvice(ResultAdvice advice) = 0;
    virtual std::vector<ResultAdvice> GetAdvice() = 0;
    virtual void RemoveAdvice() = 0;
    /// The variable that was predicted; borrowed from the model's dictionary.
    virtual const ScoreDictVar* GetTarget() const = 0;
    virtual void SetConfidence(double probability) = 0;
    /// A probability between 0 and 1; -1 until one was set.
    virtual double GetConfidence() const = 0;
    virtual ResultType GetScoreResultType() = 0;

protected:
    ScoreResult() = default;
    ScoreResult(const ScoreResult&) = default;
    ScoreResult& operator=(const ScoreResult&) = default;
};
