#include "batch/SetEngine.h"

#include <stdexcept>

#include "batch/CallRequirements.h"
#include "batch/ColumnEncoder.h"
#include "batch/SetBlocks.h"
#include "batch/SubModelGrouping.h"

namespace nbscore {

SetEngine::SetEngine(const ModelTables& set) : numCategories(set.targetCategories.size()) {
    for (const ClassifierTables& subModel : set.classifiers) {
        names.push_back(subModel.name);
        firstPredictors.push_back(numPredictors);
        numPredictors += subModel.predictors.size();
        for (const PredictorTables& predictor : subModel.predictors)
            inputs.Add(predictor);
    }
    std::vector<std::size_t> numLists(GetInputs().size());
    for (std::vector<std::size_t>& positions : GroupSubModels(set)) {
        std::vector<std::size_t> inputsOfReaders;
        std::vector<std::size_t> listsOfReaders;
        for (const PredictorTables& predictor : set.classifiers[positions.front()].predictors) {
            inputsOfReaders.push_back(inputs.Add(predictor));
            listsOfReaders.push_back(numLists[inputsOfReaders.back()]++);
        }
        parts.push_back(
            {SubModelGroup(set, std::move(positions)), std::move(inputsOfReaders), std::move(listsOfReaders)});
    }
}

template <typename Value>
InputDictionary SetEngine::MakeDictionary(std::size_t input, std::span<const Value> values) const {
    RequireInput(input, GetInputs().size());
    std::vector<std::vector<RowNumber>> rowLists;
    for (const Part& part : parts) {
        for (std::size_t j = 0; j < part.inputsOfReaders.size(); ++j) {
            if (part.inputsOfReaders[j] != input) continue;
            rowLists.push_back(RowsOfCodes(part.group.GetReaders()[j].rows, values));
        }
    }
    return {this, input, values.size(), std::move(rowLists)};
}

template InputDictionary SetEngine::MakeDictionary(std::size_t, std::span<const std::string_view>) const;
template InputDictionary SetEngine::MakeDictionary(std::size_t, std::span<const double>) const;

void SetEngine::RequireFitting(std::span<const Column> columns, std::size_t cases,
                               const SubModelColumns& answers) const {
    RequireReadable(columns, cases, this, GetInputs());
    RequireAnswerSize("scores", answers.scores.size(), cases, names.size());
    RequireAnswerSize("counters of missing values", answers.missing.size(), numPredictors);
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), numPredictors);
}

void SetEngine::Score(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const {
    RequireFitting(columns, cases, answers);
    for (const Part& part : parts)
        SetBlocks(*this, part, columns, cases, answers).Score();
}

}  // namespace nbscore
