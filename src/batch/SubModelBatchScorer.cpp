#include "batch/SubModelBatchScorer.h"

#include <stdexcept>

#include "batch/ScorableTables.h"
#include "batch/SetEngine.h"

namespace nbscore {
namespace {

ModelTables GetTablesOfSet(const ScoreModel& model) {
    ModelTables tables = GetScorableTables(model);
    if (!tables.isSet) throw std::invalid_argument("The model is a single classifier and no set of sub-models.");
    return tables;
}

}  // namespace

SubModelBatchScorer::SubModelBatchScorer(const ScoreModel& model)
    : engine(std::make_shared<SetEngine>(GetTablesOfSet(model))) {}

const std::vector<BatchInput>& SubModelBatchScorer::GetInputs() const {
    return engine->GetInputs();
}

const std::vector<std::string>& SubModelBatchScorer::GetSubModels() const {
    return engine->GetSubModels();
}

std::size_t SubModelBatchScorer::GetNumPredictors() const {
    return engine->GetNumPredictors();
}

bool SubModelBatchScorer::ReadsDerivedFields() const {
    return engine->ReadsDerivedFields();
}

InputDictionary SubModelBatchScorer::MakeDictionary(std::size_t input, std::span<const std::string_view> values) const {
    return engine->MakeDictionary(input, values);
}

InputDictionary SubModelBatchScorer::MakeDictionary(std::size_t input, std::span<const double> values) const {
    return engine->MakeDictionary(input, values);
}

void SubModelBatchScorer::Score(std::span<const Column> columns, std::size_t cases,
                                const SubModelColumns& answers) const {
    engine->Score(columns, cases, answers);
}

const std::vector<std::size_t>& SubModelBatchScorer::GetInputsOfReaders() const {
    return engine->GetInputsOfReaders();
}

RowNumber SubModelBatchScorer::RowOf(std::size_t reader, std::string_view text) const {
    return engine->RowOf(reader, text);
}

RowNumber SubModelBatchScorer::RowOf(std::size_t reader, double number) const {
    return engine->RowOf(reader, number);
}

void SubModelBatchScorer::ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                                    const SubModelColumns& answers) const {
    engine->ScoreRows(rows, cases, answers);
}

}  // namespace nbscore
