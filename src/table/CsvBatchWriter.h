#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreValue.h"

namespace nbscore {

/// What scoring gave for some cases: of a single classifier what is predicted, and for each category a probability; of
/// a set a score for each sub-model. Everything is borrowed.
struct ScoredBatch {
    /// The values that are predicted, and for each case which one. Empty of a set.
    std::span<const std::unique_ptr<const ScoreValue>> predictions;
    std::span<const std::int32_t> predicted;
    std::span<const double> confidence;
    /// Case by case; none where only the prediction is wanted.
    std::span<const double> numbers;
    std::size_t numbersOfCase = 0;

    /// Of the cases from one on.
    ScoredBatch From(std::size_t first) const;
};

/// Appends many scored cases at once, each as CsvScoreWriter does: the row as it was read and, behind it, its scores.
/// Used by one thread.
class CsvBatchWriter {
public:
    /// The columns that scoring adds: the scores of a set, or else a prediction, and a confidence and probabilities if
    /// there are any.
    struct AddedColumns {
        bool hasPrediction = false;
        bool hasConfidence = false;
        std::size_t numbers = 0;
    };

    CsvBatchWriter(char cellDelimiter, AddedColumns added) : delimiter(cellDelimiter), columns(added) {}

    /// Appends cases until the text is so long or all are there. Answers how many.
    /// @param rows as they are to be written, without their ends. @param scored what came of each of them.
    std::size_t Append(std::string& text, std::span<const std::string_view> rows, const ScoredBatch& scored,
                       std::size_t longEnough);

private:
    void PreparePredictions(const ScoredBatch& scored);
    char* WriteScores(char* to, const ScoredBatch& scored, std::size_t number) const;
    char* WriteNumbers(char* to, std::span<const double> numbers) const;

    char delimiter;
    AddedColumns columns;
    /// The cell of each value that is predicted, behind its delimiter.
    std::vector<std::string> predictionCells;
    std::size_t longestPrediction = 0;
};

}  // namespace nbscore
