#include "batch/ClassifierEngine.h"

#include <algorithm>

#include "batch/CallRequirements.h"
#include "batch/ClassifierBlocks.h"
#include "batch/ColumnEncoder.h"

namespace nbscore {
namespace {

constexpr std::size_t rowsOfAByte = 256;

FactorTable MakeFactors(const PredictorTables& predictor, const ValueRows& rows, std::size_t categories) {
    FactorTable factors(rows.GetNumRows(), categories);
    if (predictor.probabilities == nullptr) return factors;
    for (RowNumber row = firstKnownRow; row < rows.GetNumRows(); ++row) {
        const auto code = static_cast<std::size_t>(rows.GetCode(0, row));
        factors.SetRow(row, predictor.probabilities->at(code));
    }
    return factors;
}

}  // namespace

ClassifierEngine::ClassifierEngine(const ModelTables& model) {
    const ClassifierTables& classifier = model.classifiers.front();
    // Of a model that no case says anything to, there may be fewer priors than categories.
    const std::size_t numCategories = classifier.priors.size();
    for (std::size_t k = 0; k < numCategories; ++k)
        categories.push_back(model.targetCategories[k]->GetString());
    priors = AlignedNumbers(FactorTable::GetStride(numCategories), 1.0);
    std::ranges::copy(classifier.priors, priors.Get());
    targetCounts = classifier.targetCounts;
    for (const PredictorTables& predictor : classifier.predictors)
        AddPredictor(predictor);
}

void ClassifierEngine::AddPredictor(const PredictorTables& tables) {
    const std::size_t input = inputs.Add(tables);
    const PredictorTables* const only = &tables;
    ValueRows rows({&only, 1});
    const auto reader = static_cast<std::size_t>(std::ranges::count(inputsOfPredictors, input));
    hasByteRows = hasByteRows && rows.GetNumRows() <= rowsOfAByte;
    FactorTable factors = MakeFactors(tables, rows, categories.size());
    predictors.push_back({std::move(rows), std::move(factors), reader});
    inputsOfPredictors.push_back(input);
}

template <typename Value>
InputDictionary ClassifierEngine::MakeDictionary(std::size_t input, std::span<const Value> values) const {
    RequireInput(input, GetInputs().size());
    std::vector<std::vector<RowNumber>> rowLists;
    for (std::size_t j = 0; j < predictors.size(); ++j) {
        if (inputsOfPredictors[j] != input) continue;
        rowLists.push_back(RowsOfCodes(predictors[j].rows, values));
    }
    return {this, input, values.size(), std::move(rowLists)};
}

template InputDictionary ClassifierEngine::MakeDictionary(std::size_t, std::span<const std::string_view>) const;
template InputDictionary ClassifierEngine::MakeDictionary(std::size_t, std::span<const double>) const;

void ClassifierEngine::RequireFitting(std::span<const Column> columns, std::size_t cases,
                                      const ClassificationColumns& answers) const {
    RequireReadable(columns, cases, this, GetInputs());
    RequireAnswerSize("predictions", answers.predicted.size(), cases);
    RequireAnswerSize("confidences", answers.confidence.size(), cases);
    RequireAnswerSize("probabilities", answers.probabilities.size(), cases, categories.size());
    RequireAnswerSize("counters of missing values", answers.missing.size(), predictors.size());
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), predictors.size());
}

void ClassifierEngine::Score(std::span<const Column> columns, std::size_t cases,
                             const ClassificationColumns& answers) const {
    RequireFitting(columns, cases, answers);
    if (cases == 0) return;
    if (hasByteRows) {
        ClassifierBlocks(*this, columns, cases, answers).Score<std::uint8_t>();
    } else {
        ClassifierBlocks(*this, columns, cases, answers).Score<RowNumber>();
    }
}

}  // namespace nbscore
