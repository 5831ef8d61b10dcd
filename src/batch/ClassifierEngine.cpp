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

ClassifierEngine::ClassifierEngine(const ModelTables& model) : readsDerivedFields(model.readsDerivedFields) {
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
    readersOfInputs.resize(GetInputs().size());
    std::vector<std::size_t>& readers = readersOfInputs[input];
    hasByteRows = hasByteRows && rows.GetNumRows() <= rowsOfAByte;
    FactorTable factors = MakeFactors(tables, rows, categories.size());
    const std::size_t position = predictors.size();
    predictors.push_back({std::move(rows), std::move(factors), readers.size()});
    readers.push_back(position);
    inputsOfPredictors.push_back(input);
}

template <typename Value>
InputDictionary ClassifierEngine::MakeDictionary(std::size_t input, std::span<const Value> values) const {
    RequireInput(input, GetInputs().size());
    std::vector<std::vector<RowNumber>> rowLists;
    for (const std::size_t reader : readersOfInputs[input]) {
        std::vector<RowNumber>& rows = rowLists.emplace_back(1, missingRow);
        for (const Value& value : values)
            rows.push_back(RowOf(reader, value));
    }
    return {identity, input, values.size(), std::move(rowLists)};
}

template InputDictionary ClassifierEngine::MakeDictionary(std::size_t, std::span<const std::string_view>) const;
template InputDictionary ClassifierEngine::MakeDictionary(std::size_t, std::span<const double>) const;

void ClassifierEngine::RequireRoom(std::size_t cases, const ClassificationColumns& answers) const {
    RequireAnswerSize("predictions", answers.predicted.size(), cases);
    RequireAnswerSize("confidences", answers.confidence.size(), cases);
    RequireAnswerSize("probabilities", answers.probabilities.size(), cases, categories.size());
    RequireAnswerSize("counters of missing values", answers.missing.size(), predictors.size());
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), predictors.size());
}

void ClassifierEngine::Score(std::span<const Column> columns, std::size_t cases,
                             const ClassificationColumns& answers) const {
    RequireReadable(columns, cases, identity, GetInputs());
    ScoreReadable(ColumnsOfReaders(columns, inputsOfPredictors), cases, answers);
}

void ClassifierEngine::ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                                 const ClassificationColumns& answers) const {
    const std::vector<Column> columns = MakeRowColumns(rows, cases, predictors.size());
    ScoreReadable(ColumnsOfReaders(columns), cases, answers);
}

void ClassifierEngine::ScoreReadable(std::span<const Column* const> columns, std::size_t cases,
                                     const ClassificationColumns& answers) const {
    RequireRoom(cases, answers);
    if (cases == 0) return;
    if (hasByteRows) {
        ClassifierBlocks(*this, columns, cases, answers).Score<std::uint8_t>();
    } else {
        ClassifierBlocks(*this, columns, cases, answers).Score<RowNumber>();
    }
}

}  // namespace nbscore
