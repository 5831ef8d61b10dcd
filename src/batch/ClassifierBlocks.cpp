#include "batch/ClassifierBlocks.h"

#include <algorithm>

#include "batch/ColumnEncoder.h"
#include "batch/PosteriorLoop.h"
#include "batch/ProductLoops.h"

namespace nbscore {
namespace {

constexpr std::size_t multiple = ProductTask::caseMultiple;
/// Of probabilities; with the rows of the predictors beside them a block stays well within the second cache.
constexpr std::size_t probabilitiesPerBlock = 16384;
constexpr std::size_t casesPerBlock = 1024;

std::size_t RoundUp(std::size_t number) {
    return (number + multiple - 1) / multiple * multiple;
}

std::size_t GetPitch(std::size_t cases, std::size_t categories) {
    const std::size_t fitting = std::clamp(probabilitiesPerBlock / categories, multiple, casesPerBlock);
    return std::min(RoundUp(cases), fitting / multiple * multiple);
}

template <typename Row>
void NoteUsable(const Row* rows, std::size_t count, std::uint8_t* usable) {
    for (std::size_t i = 0; i < count; ++i)
        usable[i] = std::max(usable[i], static_cast<std::uint8_t>(std::min<Row>(rows[i], firstKnownRow)));
}

template <typename Row>
std::uint64_t CountRow(std::span<const Row> rows, RowNumber row) {
    return static_cast<std::uint64_t>(std::ranges::count(rows, static_cast<Row>(row)));
}

}  // namespace

ClassifierBlocks::ClassifierBlocks(const ClassifierEngine& classifierEngine,
                                   std::span<const Column* const> readerColumns, std::size_t numCases,
                                   const ClassificationColumns& answerColumns)
    : engine(classifierEngine),
      columns(readerColumns),
      cases(numCases),
      answers(answerColumns),
      pitch(GetPitch(numCases, engine.categories.size())),
      probabilities(pitch * engine.categories.size(), 0.0),
      scratch(multiple * FactorTable::GetStride(engine.categories.size()), 0.0),
      usable(pitch),
      predicted(pitch),
      confidence(pitch) {
    for (const ClassifierEngine::Predictor& predictor : engine.predictors) {
        tablesByRow.push_back(predictor.factors.GetRows());
        tablesByCategory.push_back(predictor.factors.GetPlanes());
    }
}

template <typename Row>
void ClassifierBlocks::Score() {
    // What stands behind a block's last case is read too: rows of the block before, or of missing values.
    std::vector<Row> rows(engine.predictors.size() * pitch);
    std::vector<Row*> rowsOfPredictors;
    for (std::size_t j = 0; j < engine.predictors.size(); ++j)
        rowsOfPredictors.push_back(rows.data() + j * pitch);

    for (std::size_t first = 0; first < cases; first += pitch) {
        const Block block{first, std::min(pitch, cases - first)};
        std::ranges::fill(usable, std::uint8_t{0});
        for (std::size_t j = 0; j < engine.predictors.size(); ++j)
            EncodePredictor(j, block, rowsOfPredictors[j]);
        Multiply<Row>(block, rowsOfPredictors.data());
        Predict(block);
        Answer(block);
    }
}

template void ClassifierBlocks::Score<std::uint8_t>();
template void ClassifierBlocks::Score<RowNumber>();

template <typename Row>
void ClassifierBlocks::EncodePredictor(std::size_t predictor, const Block& block, Row* rows) {
    const ClassifierEngine::Predictor& reading = engine.predictors[predictor];
    EncodeColumn(reading.rows, reading.reader, *columns[predictor], block.first, block.cases, rows);
    NoteUsable(rows, block.cases, usable.data());
    const std::span<const Row> encoded(rows, block.cases);
    if (!answers.missing.empty()) answers.missing[predictor] += CountRow(encoded, missingRow);
    if (!answers.unknown.empty()) answers.unknown[predictor] += CountRow(encoded, unknownRow);
}

template <typename Row>
void ClassifierBlocks::Multiply(const Block& block, const Row* const* rows) {
    MultiplyFactors({.priors = engine.priors.Get(),
                     .categories = engine.categories.size(),
                     .predictors = engine.predictors.size(),
                     .tablesByRow = tablesByRow.data(),
                     .tablesByCategory = tablesByCategory.data(),
                     .cases = block.cases,
                     .joints = probabilities.Get(),
                     .pitch = pitch,
                     .scratch = scratch.Get()},
                    rows);
}

void ClassifierBlocks::Predict(const Block& block) {
    NormalizeAndPredict({.probabilities = probabilities.Get(),
                         .pitch = pitch,
                         .categories = engine.categories.size(),
                         .cases = block.cases,
                         .usable = usable.data(),
                         .targetCounts = engine.targetCounts,
                         .predicted = predicted.data(),
                         .confidence = confidence.data()});
}

void ClassifierBlocks::Answer(const Block& block) const {
    if (!answers.predicted.empty()) {
        std::copy_n(predicted.begin(), block.cases,
                    answers.predicted.begin() + static_cast<std::ptrdiff_t>(block.first));
    }
    if (!answers.confidence.empty()) {
        std::copy_n(confidence.begin(), block.cases,
                    answers.confidence.begin() + static_cast<std::ptrdiff_t>(block.first));
    }
    if (!answers.probabilities.empty()) AnswerProbabilities(block);
}

void ClassifierBlocks::AnswerProbabilities(const Block& block) const {
    const std::size_t categories = engine.categories.size();
    for (std::size_t k = 0; k < categories; ++k) {
        const double* const computed = probabilities.Get() + k * pitch;
        if (answers.probabilityOrder == MatrixOrder::ColumnByColumn) {
            std::copy_n(computed, block.cases, answers.probabilities.data() + k * cases + block.first);
            continue;
        }
        double* const answer = answers.probabilities.data() + block.first * categories + k;
        for (std::size_t i = 0; i < block.cases; ++i)
            answer[i * categories] = computed[i];
    }
}

}  // namespace nbscore
