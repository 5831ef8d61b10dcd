#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/BatchCasesOf.h"

namespace nbscore {

/// Cases of a single classifier.
class ClassifierBatch : public BatchCasesOf {
public:
    /// @param target copied.
    ClassifierBatch(std::shared_ptr<const BatchEngine> classifier, const ScoreDictVar& target, bool onlyPrediction);

    std::unique_ptr<BatchCases> Copy() const override { return std::make_unique<ClassifierBatch>(*this); }
    std::size_t GetCasesAtOnce() const override;
    void Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) override;
    ScoredCase GetCase(std::size_t entry) override;
    bool HasNonFiniteNumber(std::size_t entry) const override;

private:
    std::span<const double> GetProbabilities(std::size_t entry) const;

    bool predictionOnly;
    /// What is predicted, for each category; shared by copies.
    std::vector<std::shared_ptr<const ScoreValue>> predictions;
    std::size_t numCategories;
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> probabilities;
    /// Of one case, one for each category that the target declares.
    std::vector<double> arranged;
};

}  // namespace nbscore
