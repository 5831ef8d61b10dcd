#pragma once

#include <memory>
#include <string>
#include <vector>

#include "batch/SubModelBatchScorer.h"
#include "host/BatchCases.h"
#include "host/SubModelScores.h"

namespace nbscore {

/// Cases of a set of sub-models.
class SubModelBatch : public BatchCases {
public:
    /// @param descriptors for each sub-model its name and its assessment figures.
    SubModelBatch(SubModelBatchScorer set, std::vector<SubModelScore> descriptors);

    std::unique_ptr<BatchCases> Copy() const override { return std::make_unique<SubModelBatch>(*this); }
    std::vector<std::string> GetFieldsOfReaders() const override;
    bool ReadsDerivedFields() const override { return scorer.ReadsDerivedFields(); }
    RowNumber RowOf(std::size_t reader, std::string_view text) const override { return scorer.RowOf(reader, text); }
    RowNumber RowOf(std::size_t reader, double number) const override { return scorer.RowOf(reader, number); }
    std::size_t GetCasesAtOnce() const override;
    void Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) override;
    ScoredCase GetCase(std::size_t entry) override;
    bool HasNonFiniteNumber(std::size_t entry) const override;

private:
    std::span<const double> GetScores(std::size_t entry) const;

    SubModelBatchScorer scorer;
    std::vector<SubModelScore> subModels;
    std::vector<double> scores;
};

}  // namespace nbscore
