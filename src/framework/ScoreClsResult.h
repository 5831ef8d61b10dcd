#pragma once

#include <utility>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreResult.h"

/// The result of a classification: a prediction and the probability of every target category.
///
/// "Percent" is the interface's own word and is kept: the numbers are probabilities between 0 and 1.
class SCOREFRAMEWORK_API ScoreClsResult : public ScoreResult {
public:
    /// A target category, borrowed from the model's dictionary, and its probability.
    using ValuePercent = std::pair<ScoreValue*, double>;

    ~ScoreClsResult() override;

    /// Sets the probability of a category: of the first entry whose value equals it, or of a new one. Always
    /// true.
    virtual bool AddValuePercent(ScoreValue* value, double percent) = 0;
    /// The probability of the first entry whose value equals this one; -1 when there is none.
    virtual double GetPercent(const ScoreValue* value) const = 0;
    /// All entries, in the order in which their values were first added.
    virtual const std::vector<ValuePercent>& GetAllValuePercent() const = 0;

protected:
    ScoreClsResult() = default;
    ScoreClsResult(const ScoreClsResult&) = default;
    ScoreClsResult& operator=(const ScoreClsResult&) = default;
};
