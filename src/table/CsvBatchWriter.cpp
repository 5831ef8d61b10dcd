#include "table/CsvBatchWriter.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "table/CsvText.h"

namespace nbscore {
namespace {

/// A text grows by so much at a time, because what is grown by is filled with zeros first.
constexpr std::size_t roomAtOnce = std::size_t{32} << 10;

std::uint64_t BitsOf(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

/// The system-missing number's cell is empty.
char* WriteCell(char* to, double number) {
    return MCMV::IsMissing(number) ? to : WriteNumber(to, number);
}

}  // namespace

ScoredBatch ScoredBatch::From(std::size_t first) const {
    ScoredBatch rest = *this;
    if (!predicted.empty()) {
        rest.predicted = predicted.subspan(first);
        rest.confidence = confidence.subspan(first);
    }
    if (!numbers.empty()) rest.numbers = numbers.subspan(first * numbersOfCase);
    return rest;
}

std::size_t CsvBatchWriter::Append(std::string& text, std::span<const std::string_view> rows, const ScoredBatch& scored,
                                   std::size_t longEnough) {
    if (predictionCells.empty()) PreparePredictions(scored);
    constexpr std::size_t mostCellBytes = mostNumberBytes + 1;
    const std::size_t mostScoreBytes =
        longestPrediction + (2 + std::max(columns.numbers, scored.numbersOfCase)) * mostCellBytes;
    std::size_t end = text.size();
    std::size_t count = 0;
    for (; count < rows.size() && end < longEnough; ++count) {
        const std::string_view row = rows[count];
        const std::size_t most = row.size() + mostScoreBytes;
        if (text.size() - end < most) text.resize(end + std::max(most, roomAtOnce));
        char* to = text.data() + end;
        std::memcpy(to, row.data(), row.size());
        to = WriteScores(to + row.size(), scored, count);
        *to++ = '\n';
        end = static_cast<std::size_t>(to - text.data());
    }
    text.resize(end);
    return count;
}

void CsvBatchWriter::PreparePredictions(const ScoredBatch& scored) {
    for (const std::unique_ptr<const ScoreValue>& prediction : scored.predictions) {
        std::string& cell = predictionCells.emplace_back(1, delimiter);
        AppendCsvCell(cell, prediction->GetString(), delimiter);
        longestPrediction = std::max(longestPrediction, cell.size());
    }
}

/// Writing a number takes long, and one of the probabilities is the confidence once more.
char* CsvBatchWriter::WriteScores(char* to, const ScoredBatch& scored, std::size_t number) const {
    const std::span<const double> numbers = scored.numbers.subspan(number * scored.numbersOfCase, scored.numbersOfCase);
    if (!columns.hasPrediction) return WriteNumbers(to, numbers);
    const std::string& prediction = predictionCells[static_cast<std::size_t>(scored.predicted[number])];
    std::memcpy(to, prediction.data(), prediction.size());
    to += prediction.size();
    if (!columns.hasConfidence) return to;
    const double confidence = scored.confidence[number];
    *to++ = delimiter;
    const char* const written = to;
    to = WriteCell(to, confidence);
    const auto length = static_cast<std::size_t>(to - written);
    for (const double probability : numbers) {
        *to++ = delimiter;
        if (BitsOf(probability) == BitsOf(confidence)) {
            std::memmove(to, written, mostNumberBytes);
            to += length;
        } else {
            to = WriteCell(to, probability);
        }
    }
    // Of categories that the model does not score.
    for (std::size_t i = numbers.size(); i < columns.numbers; ++i)
        *to++ = delimiter;
    return to;
}

char* CsvBatchWriter::WriteNumbers(char* to, std::span<const double> numbers) const {
    for (const double number : numbers) {
        *to++ = delimiter;
        to = WriteCell(to, number);
    }
    return to;
}

}  // namespace nbscore
