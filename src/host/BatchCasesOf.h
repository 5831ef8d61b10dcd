#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/BatchCases.h"

namespace nbscore {

/// What batches do alike, whichever batch scorer they ask.
/// @tparam Scorer BatchScorer or SubModelBatchScorer.
template <typename Scorer>
class BatchCasesOf : public BatchCases {
public:
    /// @param inputs of each reader, the number of the scorer's input that it reads.
    BatchCasesOf(Scorer batchScorer, const std::vector<std::size_t>& inputs) : scorer(std::move(batchScorer)) {
        for (const std::size_t input : inputs)
            fieldsOfReaders.push_back(scorer.GetInputs()[input].name);
    }

    std::vector<std::string> GetFieldsOfReaders() const override { return fieldsOfReaders; }
    bool ReadsDerivedFields() const override { return scorer.ReadsDerivedFields(); }
    RowNumber RowOf(std::size_t reader, std::string_view text) const override { return scorer.RowOf(reader, text); }
    RowNumber RowOf(std::size_t reader, double number) const override { return scorer.RowOf(reader, number); }

protected:
    const Scorer& GetScorer() const { return scorer; }

private:
    Scorer scorer;
    std::vector<std::string> fieldsOfReaders;
};

}  // namespace nbscore
