#include "batch/SingleClassifier.h"

#include <algorithm>
#include <cstdint>

#include "batch/Loops.h"

namespace nbscore {
namespace {

constexpr std::size_t rowsOfAByte = 256;
constexpr std::size_t multiple = ProductTask::caseMultiple;
/// Of probabilities; with the rows of the predictors beside them a block stays well within the second cache.
constexpr std::size_t probabilitiesPerBlock = 16384;
constexpr std::size_t casesPerBlock = 1024;

FactorTable MakeFactors(const PredictorTables& predictor, const ValueRows& rows, std::size_t categories) {
    FactorTable factors(rows.GetNumRows(), categories);
    if (predictor.probabilities == nullptr) return factors;
    for (FactorRow row = firstKnownRow; row < rows.GetNumRows(); ++row) {
        const auto code = static_cast<std::size_t>(rows.GetCode(0, row));
        factors.SetRow(row, predictor.probabilities->at(code));
    }
    return factors;
}

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
std::uint64_t CountRow(std::span<const Row> rows, FactorRow row) {
    return static_cast<std::uint64_t>(std::ranges::count(rows, static_cast<Row>(row)));
}

template <typename Number>
void CopyToAnswer(const std::vector<Number>& computed, std::size_t first, std::size_t count, std::span<Number> answer) {
    if (!answer.empty()) std::copy_n(computed.begin(), count, answer.begin() + static_cast<std::ptrdiff_t>(first));
}

}  // namespace

SingleClassifier::SingleClassifier(const ClassifierTables& tables, std::span<const Reader> readers)
    : categories(tables.priors.size()),
      priors(FactorTable::GetStride(categories), 1.0),
      targetCounts(tables.targetCounts) {
    std::ranges::copy(tables.priors, priors.Get());
    for (std::size_t j = 0; j < readers.size(); ++j) {
        factors.push_back(MakeFactors(tables.predictors[j], readers[j].rows, categories));
        tablesByRow.push_back(factors.back().GetRows());
        tablesByCategory.push_back(factors.back().GetPlanes());
        hasByteRows = hasByteRows && factors.back().GetNumRows() <= rowsOfAByte;
    }
}

/// One call: the cases in blocks that stay in the processor's cache from the first look at their values to the answers.
/// @tparam Row std::uint8_t where every row's number fits into one, else FactorRow.
template <typename Row>
class SingleClassifier::Call {
public:
    /// All is borrowed for the object's life, and fits together.
    Call(const SingleClassifier& scoringClassifier, const CaseValues& caseValues, const AnswerColumns& answerColumns)
        : classifier(scoringClassifier),
          values(caseValues),
          answers(answerColumns),
          pitch(GetPitch(values.cases, classifier.categories)),
          // What stands behind a block's last case is read too: rows of the block before, or of missing values.
          rows(classifier.factors.size() * pitch),
          rowsOfPredictors(classifier.factors.size()),
          probabilities(pitch * classifier.categories, 0.0),
          scratch(multiple * FactorTable::GetStride(classifier.categories), 0.0),
          usable(pitch),
          predicted(pitch),
          confidence(pitch) {
        for (std::size_t j = 0; j < rowsOfPredictors.size(); ++j)
            rowsOfPredictors[j] = rows.data() + j * pitch;
    }

    void Score() {
        for (std::size_t first = 0; first < values.cases; first += pitch) {
            const Block block{first, std::min(pitch, values.cases - first)};
            std::ranges::fill(usable, std::uint8_t{0});
            for (std::size_t j = 0; j < rowsOfPredictors.size(); ++j)
                EncodePredictor(j, block);
            Multiply(block);
            Predict(block);
            CopyToAnswer(predicted, block.first, block.cases, answers.predicted);
            CopyToAnswer(confidence, block.first, block.cases, answers.confidence);
            if (!answers.probabilities.empty()) AnswerProbabilities(block);
        }
    }

private:
    struct Block {
        std::size_t first;
        std::size_t cases;
    };

    void EncodePredictor(std::size_t predictor, const Block& block) {
        Row* const out = rows.data() + predictor * pitch;
        values.Encode(predictor, block.first, block.cases, out);
        NoteUsable(out, block.cases, usable.data());
        const std::span<const Row> encoded(out, block.cases);
        if (!answers.missing.empty()) answers.missing[predictor] += CountRow(encoded, missingRow);
        if (!answers.unknown.empty()) answers.unknown[predictor] += CountRow(encoded, unknownRow);
    }

    void Multiply(const Block& block) {
        MultiplyFactors({.priors = classifier.priors.Get(),
                         .categories = classifier.categories,
                         .predictors = rowsOfPredictors.size(),
                         .tablesByRow = classifier.tablesByRow.data(),
                         .tablesByCategory = classifier.tablesByCategory.data(),
                         .cases = block.cases,
                         .joints = probabilities.Get(),
                         .pitch = pitch,
                         .scratch = scratch.Get()},
                        rowsOfPredictors.data());
    }

    void Predict(const Block& block) {
        NormalizeAndPredict({.probabilities = probabilities.Get(),
                             .pitch = pitch,
                             .categories = classifier.categories,
                             .cases = block.cases,
                             .usable = usable.data(),
                             .targetCounts = classifier.targetCounts,
                             .predicted = predicted.data(),
                             .confidence = confidence.data()});
    }

    void AnswerProbabilities(const Block& block) const {
        const std::size_t numCategories = classifier.categories;
        for (std::size_t k = 0; k < numCategories; ++k) {
            const double* const computed = probabilities.Get() + k * pitch;
            if (answers.probabilityOrder == MatrixOrder::ColumnByColumn) {
                std::copy_n(computed, block.cases, answers.probabilities.data() + k * values.cases + block.first);
                continue;
            }
            double* const answer = answers.probabilities.data() + block.first * numCategories + k;
            for (std::size_t i = 0; i < block.cases; ++i)
                answer[i * numCategories] = computed[i];
        }
    }

    const SingleClassifier& classifier;
    const CaseValues& values;
    const AnswerColumns& answers;
    /// How many cases a block has room for.
    std::size_t pitch;
    std::vector<Row> rows;
    std::vector<const Row*> rowsOfPredictors;
    AlignedNumbers probabilities;
    AlignedNumbers scratch;
    std::vector<std::uint8_t> usable;
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
};

void SingleClassifier::Score(const CaseValues& values, const AnswerColumns& answers) const {
    if (hasByteRows) {
        Call<std::uint8_t>(*this, values, answers).Score();
    } else {
        Call<FactorRow>(*this, values, answers).Score();
    }
}

}  // namespace nbscore
