#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/Column.h"
#include "batch/RowNumber.h"
#include "batch/SetEngine.h"
#include "batch/SubModelColumns.h"

namespace nbscore {

/// One call of scoring by one group of sub-models, the cases in blocks that stay in the processor's cache.
class SetBlocks {
public:
    /// All is borrowed for the object's life, and fits together.
    SetBlocks(const SetEngine& setEngine, const SetEngine::Part& setPart, std::span<const Column* const> readerColumns,
              std::size_t numCases, const SubModelColumns& answerColumns);

    void Score();

private:
    struct Block {
        std::size_t first;
        std::size_t cases;
    };

    void Encode(const Block& block);
    void Answer(const Block& block);
    void AnswerCase(std::size_t entry, const double* computed) const;
    void AnswerCounts() const;
    std::uint64_t CountUnknown(std::size_t reader, std::size_t member) const;

    const SetEngine& engine;
    const SetEngine::Part& part;
    std::span<const Column* const> columns;
    std::size_t cases;
    const SubModelColumns& answers;
    std::size_t numReaders;
    std::size_t casesPerBlock;
    /// Reader by reader, each casesPerBlock long.
    std::vector<RowNumber> rows;
    AlignedNumbers scores;
    /// Where they are asked for: how many cases had which row, for each reader.
    std::vector<std::vector<std::uint64_t>> counts;
};

}  // namespace nbscore
