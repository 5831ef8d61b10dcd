#include "batch/BatchEngine.h"

#include <stdexcept>
#include <utility>

#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfTables.h"

namespace nbscore {

ModelTables GetScorableTables(const ScoreModel& model) {
    const auto* const open = dynamic_cast<const ModelSelfTables*>(&model);
    if (open == nullptr) throw std::invalid_argument("The model does not lay its tables open.");
    if (const auto* const check = dynamic_cast<const ModelSelfCheck*>(&model)) {
        if (const ScoringObstacle obstacle = check->FindScoringObstacle())
            throw std::invalid_argument(obstacle.message);
    }
    ModelTables tables = open->GetTables();
    for (const ClassifierTables& classifier : tables.classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            if (predictor.kind != PredictorTables::Foreign) continue;
            throw std::invalid_argument("The predictor \"" + predictor.var->GetName() +
                                        "\" has an encoder of an unknown class.");
        }
    }
    return tables;
}

void RequireAnswerSize(const std::string& what, std::size_t size, std::size_t rows, std::size_t columns) {
    if (size == 0) return;
    // The product may be beyond what a size can hold.
    if (columns != 0 && size % columns == 0 && size / columns == rows) return;
    throw std::invalid_argument("There is room for " + std::to_string(size) + " " + what + ", but " +
                                std::to_string(rows) + " times " + std::to_string(columns) + " are to be written.");
}

void RequireRoom(const AnswerColumns& answers, std::size_t cases, std::size_t numbersPerCase, const std::string& what,
                 std::size_t predictors) {
    RequireAnswerSize("predictions", answers.predicted.size(), cases);
    RequireAnswerSize("confidences", answers.confidence.size(), cases);
    RequireAnswerSize(what, answers.probabilities.size(), cases, numbersPerCase);
    RequireAnswerSize("counters of missing values", answers.missing.size(), predictors);
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), predictors);
}

BatchEngine::BatchEngine(const ModelTables& model) : readsDerivedFields(model.readsDerivedFields) {
    if (model.rule == ScoringRule::Standard) throw std::invalid_argument("The model is scored by the standard's rule.");
    for (const ClassifierTables& classifier : model.classifiers)
        AddInputs(classifier);
    rowLists.emplace(model, inputsOfPredictors);
    if (model.isSet) {
        for (const ClassifierTables& subModel : model.classifiers)
            subModels.push_back(subModel.name);
        set.emplace(model, *rowLists);
        return;
    }
    const ClassifierTables& classifier = model.classifiers.front();
    // Of a model that no case says anything to, there may be fewer priors than categories.
    for (std::size_t k = 0; k < classifier.priors.size(); ++k)
        categories.push_back(model.targetCategories[k]->GetString());
    single.emplace(classifier, *rowLists);
}

void BatchEngine::AddInputs(const ClassifierTables& classifier) {
    for (const PredictorTables& predictor : classifier.predictors) {
        const auto [entry, isNew] = positionsOfInputs.try_emplace(predictor.var->GetName(), inputs.size());
        if (isNew) inputs.push_back({entry->first, predictor.kind});
        inputsOfPredictors.push_back(entry->second);
    }
}

template <typename Value>
InputDictionary BatchEngine::LookUp(std::size_t input, std::span<const Value> values, const Validity& validity) const {
    if (input >= inputs.size()) throw std::out_of_range("There is no input " + std::to_string(input) + ".");
    InputDictionary::Lookup lookup{identity, input, values.size(), {}};
    for (const std::size_t position : rowLists->GetReadersOf(input)) {
        const Reader& reader = rowLists->GetReaders()[position];
        std::vector<FactorRow>& rows = lookup.rowsOfReaders.emplace_back(1, missingRow);
        for (std::size_t code = 0; code < values.size(); ++code)
            rows.push_back(validity.HasValue(code) ? reader.rows.RowOf(values[code]) : missingRow);
        if (rows.size() <= longestByteList && reader.rows.GetNumRows() <= longestByteList) {
            lookup.bytesOfReaders.resize(lookup.rowsOfReaders.size());
            lookup.bytesOfReaders.back() = ByteList(rows);
        }
    }
    return InputDictionary(std::make_shared<InputDictionary::Lookup>(std::move(lookup)));
}

InputDictionary BatchEngine::MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                            const Validity& validity) const {
    return LookUp(input, values, validity);
}

InputDictionary BatchEngine::MakeDictionary(std::size_t input, std::span<const double> values,
                                            const Validity& validity) const {
    return LookUp(input, values, validity);
}

std::vector<std::string> BatchEngine::GetFieldsOfReaders() const {
    std::vector<std::string> fields;
    for (const Reader& reader : rowLists->GetReaders())
        fields.push_back(inputs[reader.input].name);
    return fields;
}

void BatchEngine::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    RequireReadable(columns, cases, identity, inputs);
    ScoreValues({.readers = rowLists->GetReaders(), .columns = columns, .rows = {}, .cases = cases}, answers);
}

void BatchEngine::ScoreRows(std::span<const std::span<const FactorRow>> rows, std::size_t cases,
                            const AnswerColumns& answers) const {
    const std::size_t numReaders = rowLists->GetReaders().size();
    if (rows.size() != numReaders) {
        throw std::invalid_argument("There are " + std::to_string(rows.size()) + " lists of rows for " +
                                    std::to_string(numReaders) + " readers.");
    }
    for (const std::span<const FactorRow> list : rows) {
        if (list.size() == cases) continue;
        throw std::invalid_argument("A list has " + std::to_string(list.size()) + " rows for " + std::to_string(cases) +
                                    " cases.");
    }
    ScoreValues({.readers = rowLists->GetReaders(), .columns = {}, .rows = rows, .cases = cases}, answers);
}

void BatchEngine::ScoreValues(const CaseValues& values, const AnswerColumns& answers) const {
    if (IsSet() && !(answers.predicted.empty() && answers.confidence.empty())) {
        throw std::invalid_argument("A set of sub-models has no prediction and no confidence.");
    }
    RequireRoom(answers, values.cases, GetNumbersPerCase(), IsSet() ? "scores" : "probabilities",
                inputsOfPredictors.size());
    if (values.cases == 0) return;
    if (single) {
        single->Score(*rowLists, values, answers);
    } else {
        set->Score(*rowLists, values, answers);
    }
}

}  // namespace nbscore
