#pragma once

#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreResult.h"
#include "selflearning/VectorValue.h"

/// What a set of sub-models says of one case: its prediction is a `VectorValue<ModelDescriptor>` with one entry per
/// sub-model, in their order. The confidence stays -1: the sub-models are not combined into one answer.
///
/// **Copies are shallow.** A copy refers to the same prediction, and each of the two deletes it: after copying, take
/// the prediction out of one of them with SetPrediction(nullptr) before both are destroyed. Assigning over a result
/// that has a prediction of its own loses that prediction. Deliberate, part of the interface: to keep a result,
/// clone its prediction or keep the object itself.
class NAIVEBAYES_API SelfLearningResult : public ScoreResult {
public:
    /// One sub-model's answer.
    struct ModelDescriptor {
        std::string modelName;
        /// The posterior probability of the target's second category. Where the case has no value that the sub-model
        /// can use, or one of its priors is 0, it is the raw prior of that category instead, which may be above 1.
        double score = 0.0;
        /// System-missing when never set.
        double assessmentMean = 0.0;
        double assessmentStdDev = 0.0;
    };

    /// @param targetVariable borrowed; may be null.
    explicit SelfLearningResult(const ScoreDictVar* targetVariable);
    SelfLearningResult(const SelfLearningResult& other) = default;
    SelfLearningResult& operator=(const SelfLearningResult& other) = default;
    ~SelfLearningResult() override;

    void SetPrediction(ScoreValue* value) override;
    const ScoreValue* GetPrediction() const override;
    void AddAdvice(ResultAdvice advice) override;
    std::vector<ResultAdvice> GetAdvice() override;
    void RemoveAdvice() override;
    const ScoreDictVar* GetTarget() const override;
    void SetConfidence(double probability) override;
    double GetConfidence() const override;
    ResultType GetScoreResultType() override;

private:
    const ScoreDictVar* target;
    ScoreValue* prediction = nullptr;
    std::vector<ResultAdvice> advices;
    double confidence = -1.0;
};
