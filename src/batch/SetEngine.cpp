#include "batch/SetEngine.h"

#include <stdexcept>

#include "batch/CallRequirements.h"
#include "batch/ColumnEncoder.h"
#include "batch/SetBlocks.h"
#include "batch/SubModelGrouping.h"

namespace nbscore {

SetEngine::SetEngine(const ModelTables& set)
    : readsDerivedFields(set.readsDerivedFields), numCategories(set.targetCategories.size()) {
    for (const ClassifierTables& subModel : set.classifiers) {
        names.push_back(subModel.name);
        firstPredictors.push_back(numPredictors);
        numPredictors += subModel.predictors.size();
        for (const PredictorTables& predictor : subModel.predictors)
            inputs.Add(predictor);
    }
    readersOfInputs.resize(GetInputs().size());
    for (std::vector<std::size_t>& positions : GroupSubModels(set)) {
        const ClassifierTables& first = set.classifiers[positions.front()];
        AddPart(SubModelGroup(set, std::move(positions)), first);
    }
}

void SetEngine::AddPart(SubModelGroup group, const ClassifierTables& member) {
    Part part{std::move(group), inputsOfReaders.size(), {}};
    for (const PredictorTables& predictor : member.predictors) {
        const std::size_t input = inputs.Add(predictor);
        std::vector<std::size_t>& readers = readersOfInputs[input];
        part.listsOfReaders.push_back(readers.size());
        readers.push_back(inputsOfReaders.size());
        inputsOfReaders.push_back(input);
        partsOfReaders.push_back(parts.size());
    }
    parts.push_back(std::move(part));
}

template <typename Value>
RowNumber SetEngine::RowOf(std::size_t reader, Value value) const {
    const Part& part = parts.at(partsOfReaders.at(reader));
    return part.group.GetReaders()[reader - part.firstReader].rows.RowOf(value);
}

template RowNumber SetEngine::RowOf(std::size_t, std::string_view) const;
template RowNumber SetEngine::RowOf(std::size_t, double) const;

template <typename Value>
InputDictionary SetEngine::MakeDictionary(std::size_t input, std::span<const Value> values) const {
    RequireInput(input, GetInputs().size());
    std::vector<std::vector<RowNumber>> rowLists;
    for (const std::size_t reader : readersOfInputs[input]) {
        std::vector<RowNumber>& rows = rowLists.emplace_back(1, missingRow);
        for (const Value& value : values)
            rows.push_back(RowOf(reader, value));
    }
    return {identity, input, values.size(), std::move(rowLists)};
}

template InputDictionary SetEngine::MakeDictionary(std::size_t, std::span<const std::string_view>) const;
template InputDictionary SetEngine::MakeDictionary(std::size_t, std::span<const double>) const;

void SetEngine::RequireRoom(std::size_t cases, const SubModelColumns& answers) const {
    RequireAnswerSize("scores", answers.scores.size(), cases, names.size());
    RequireAnswerSize("counters of missing values", answers.missing.size(), numPredictors);
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), numPredictors);
}

void SetEngine::Score(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const {
    RequireReadable(columns, cases, identity, GetInputs());
    ScoreReadable(ColumnsOfReaders(columns, inputsOfReaders), cases, answers);
}

void SetEngine::ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                          const SubModelColumns& answers) const {
    const std::vector<Column> columns = MakeRowColumns(rows, cases, inputsOfReaders.size());
    ScoreReadable(ColumnsOfReaders(columns), cases, answers);
}

void SetEngine::ScoreReadable(std::span<const Column* const> columns, std::size_t cases,
                              const SubModelColumns& answers) const {
    RequireRoom(cases, answers);
    for (const Part& part : parts)
        SetBlocks(*this, part, columns, cases, answers).Score();
}

}  // namespace nbscore
