#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/ClassificationColumns.h"
#include "batch/ClassifierEngine.h"
#include "batch/Column.h"

namespace nbscore {

/// One call of a classifier's scoring: the cases in blocks that stay in the processor's cache from the first look at
/// their values to the answers.
class ClassifierBlocks {
public:
    /// All is borrowed for the object's life, and fits together.
    ClassifierBlocks(const ClassifierEngine& classifierEngine, std::span<const Column* const> readerColumns,
                     std::size_t numCases, const ClassificationColumns& answerColumns);

    /// @tparam Row std::uint8_t where every row's number fits into one, else RowNumber.
    template <typename Row>
    void Score();

private:
    struct Block {
        std::size_t first;
        std::size_t cases;
    };

    template <typename Row>
    void EncodePredictor(std::size_t predictor, const Block& block, Row* rows);
    template <typename Row>
    void Multiply(const Block& block, const Row* const* rows);
    void Predict(const Block& block);
    void Answer(const Block& block) const;
    void AnswerProbabilities(const Block& block) const;

    const ClassifierEngine& engine;
    std::span<const Column* const> columns;
    std::size_t cases;
    const ClassificationColumns& answers;
    /// How many cases a block has room for.
    std::size_t pitch;
    std::vector<const double*> tablesByRow;
    std::vector<const double*> tablesByCategory;
    AlignedNumbers probabilities;
    AlignedNumbers scratch;
    std::vector<std::uint8_t> usable;
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
};

}  // namespace nbscore
