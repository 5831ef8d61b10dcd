#include "scoring/Workloads.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>
#include <string>

#include "batch/BatchEngine.h"
#include "framework/ModelTables.h"
#include "scoring/ShapedModel.h"
#include "table/ModelResults.h"

namespace nbscore::bench {
namespace {

/// Every so many-th case is compared completely with the result of the model itself.
constexpr std::size_t sampleStep = 997;

void Demand(bool condition, const std::string& what) {
    if (!condition) throw std::runtime_error(what);
}

bool IsSame(double one, double other) {
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

template <typename Number>
void DemandSame(const std::vector<Number>& batch, const std::vector<Number>& loop, const char* what) {
    Demand(batch.size() == loop.size() && std::memcmp(batch.data(), loop.data(), batch.size() * sizeof(Number)) == 0,
           std::string("the batch and the tight loop differ in the ") + what);
}

/// The categories of an input are numbered as codes are.
void DemandOrder(const PredictorTables& predictor, const test::DocumentShape& shape) {
    Demand(predictor.texts.size() == shape.categories, "categories are missing");
    for (std::size_t code = 0; code < shape.categories; ++code)
        Demand(*predictor.texts[code] == ValueOf(shape.type, code), "categories are in another order");
}

AlignedNumbers Align(const std::vector<double>& numbers) {
    AlignedNumbers aligned(numbers.size(), 0.0);
    std::ranges::copy(numbers, aligned.Get());
    return aligned;
}

/// Appends some numbers, and ones up to the stride.
void AppendFilledUp(std::vector<double>& numbers, const std::vector<double>& some, std::size_t categories) {
    for (std::size_t k = 0; k < TightTables::StrideOf(categories); ++k)
        numbers.push_back(k < categories ? some[k] : 1.0);
}

TightTables CopyTables(const ScoreModel& model, const test::DocumentShape& shape) {
    const ModelTables laidOpen = GetScorableTables(model);
    const ClassifierTables& classifier = laidOpen.classifiers.front();
    TightTables tables;
    std::vector<double> priors;
    AppendFilledUp(priors, classifier.priors, shape.targetCategories);
    tables.priors = Align(priors);
    for (const PredictorTables& predictor : classifier.predictors) {
        DemandOrder(predictor, shape);
        std::vector<double> factors;
        for (const std::vector<double>& row : *predictor.probabilities)
            AppendFilledUp(factors, row, shape.targetCategories);
        tables.factors.push_back(Align(factors));
    }
    return tables;
}

TightSetTables CopySetTables(const ScoreModel& model, const test::DocumentShape& shape) {
    const ModelTables laidOpen = GetScorableTables(model);
    TightSetTables tables;
    std::vector<double> priors;
    for (std::size_t k = 0; k < shape.targetCategories; ++k) {
        for (const ClassifierTables& classifier : laidOpen.classifiers)
            priors.push_back(classifier.priors[k]);
    }
    tables.priors = Align(priors);
    for (std::size_t j = 0; j < shape.inputs; ++j) {
        std::vector<double> factors;
        for (std::size_t code = 0; code < shape.categories; ++code) {
            for (std::size_t k = 0; k < shape.targetCategories; ++k) {
                for (const ClassifierTables& classifier : laidOpen.classifiers) {
                    DemandOrder(classifier.predictors[j], shape);
                    factors.push_back((*classifier.predictors[j].probabilities)[code][k]);
                }
            }
        }
        tables.factors.push_back(Align(factors));
    }
    return tables;
}

void FillRecord(BaseCaseRecord& record, const test::DocumentShape& shape, const CodeColumns& codes,
                std::size_t position) {
    for (std::size_t input = 0; input < shape.inputs; ++input)
        SetCategory(record, shape, input, static_cast<std::size_t>(codes[input][position]));
}

/// @param check called with the number of each case of a sample, and its result by `GetScore`.
template <typename Cases, typename Check>
void AskOneByOne(ScoreModel& model, const test::DocumentShape& shape, const Cases& cases, const Check& check) {
    BaseCaseRecord record = MakeRecord(shape);
    ReusedResult result;
    ScoredCaseReader reader(model, {});
    for (std::size_t i = 0; i < cases.Count(); i += sampleStep) {
        FillRecord(record, shape, cases.GetCodes(), i);
        check(i, reader.Read(record, result.Score(model, record)));
    }
}

}  // namespace

ClassifierWorkload::ClassifierWorkload(const test::DocumentShape& documentShape, std::size_t numCases,
                                       TightLoop tightLoop)
    : shape(documentShape),
      model(ReadShapedModel(shape)),
      scorer(model.Get()),
      cases(scorer, shape, numCases),
      tables(CopyTables(model.Get(), shape)),
      loop(tightLoop),
      batchAnswers(numCases, shape.targetCategories),
      loopAnswers(numCases, shape.targetCategories) {
    ScoreInBatch();
    ScoreInTightLoop();
    DemandSame(batchAnswers.predicted, loopAnswers.predicted, "predictions");
    DemandSame(batchAnswers.confidence, loopAnswers.confidence, "confidences");
    DemandSame(batchAnswers.probabilities, loopAnswers.probabilities, "probabilities");
    CheckOneByOne();
}

void ClassifierWorkload::ScoreInBatch() {
    scorer.Score(cases.GetColumns(), cases.Count(), batchAnswers.GetColumns());
}

void ClassifierWorkload::ScoreInTightLoop() {
    loop(tables, cases.GetCodes(), cases.Count(),
         {loopAnswers.predicted.data(), loopAnswers.confidence.data(), loopAnswers.probabilities.data()});
}

void ClassifierWorkload::CheckOneByOne() {
    AskOneByOne(model.Get(), shape, cases, [this](std::size_t i, const ScoredCase& scored) {
        const auto predicted = static_cast<std::size_t>(batchAnswers.predicted[i]);
        Demand(scored.prediction->GetString() == scorer.GetCategories()[predicted], "a prediction differs");
        Demand(IsSame(scored.confidence, batchAnswers.confidence[i]), "a confidence differs");
        Demand(scored.probabilities.size() == shape.targetCategories, "probabilities are missing");
        for (std::size_t k = 0; k < shape.targetCategories; ++k) {
            Demand(IsSame(scored.probabilities[k], batchAnswers.probabilities[i * shape.targetCategories + k]),
                   "a probability differs");
        }
    });
}

SetWorkload::SetWorkload(std::size_t categories, std::size_t numCases)
    : shape{200, 8, categories, 2},
      model(ReadShapedModel(shape)),
      scorer(model.Get()),
      cases(scorer, shape, numCases),
      tables(CopySetTables(model.Get(), shape)),
      batchScores(numCases * shape.subModels),
      loopScores(numCases * shape.subModels) {
    ScoreInBatch();
    ScoreInTightLoop();
    DemandSame(batchScores, loopScores, "scores");
    CheckOneByOne();
}

void SetWorkload::ScoreInBatch() {
    AnswerColumns answers;
    answers.probabilities = batchScores;
    scorer.Score(cases.GetColumns(), cases.Count(), answers);
}

void SetWorkload::ScoreInTightLoop() {
    ScoreTwoHundredSubModels(tables, cases.GetCodes(), cases.Count(), loopScores.data());
}

void SetWorkload::CheckOneByOne() {
    AskOneByOne(model.Get(), shape, cases, [this](std::size_t i, const ScoredCase& scored) {
        Demand(scored.scores.size() == shape.subModels, "scores are missing");
        for (std::size_t m = 0; m < shape.subModels; ++m)
            Demand(IsSame(scored.scores[m], batchScores[i * shape.subModels + m]), "a score differs");
    });
}

}  // namespace nbscore::bench
