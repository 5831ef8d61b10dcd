#pragma once

#include <memory>
#include <vector>

#include "host/BatchCasesOf.h"
#include "host/SubModelScores.h"

namespace nbscore {

/// Cases of a set of sub-models.
class SubModelBatch : public BatchCasesOf {
public:
    /// @param descriptors for each sub-model its name and its assessment figures.
    SubModelBatch(std::shared_ptr<const BatchEngine> set, std::vector<SubModelScore> descriptors);

    std::unique_ptr<BatchCases> Copy() const override { return std::make_unique<SubModelBatch>(*this); }
    std::size_t GetCasesAtOnce() const override;
    void Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) override;
    ScoredCase GetCase(std::size_t entry) override;
    bool HasNonFiniteNumber(std::size_t entry) const override;

private:
    std::span<const double> GetScores(std::size_t entry) const;

    std::vector<SubModelScore> subModels;
    std::vector<double> scores;
};

}  // namespace nbscore
