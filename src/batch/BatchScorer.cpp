#include "batch/BatchScorer.h"

#include <stdexcept>

#include "batch/ClassifierEngine.h"
#include "batch/ScorableTables.h"

namespace nbscore {
namespace {

ModelTables GetTablesOfOne(const ScoreModel& model) {
    ModelTables tables = GetScorableTables(model);
    if (tables.isSet) throw std::invalid_argument("The model is a set of sub-models and no single classifier.");
    return tables;
}

}  // namespace

BatchScorer::BatchScorer(const ScoreModel& model) : engine(std::make_shared<ClassifierEngine>(GetTablesOfOne(model))) {}

const std::vector<BatchInput>& BatchScorer::GetInputs() const {
    return engine->GetInputs();
}

const std::vector<std::size_t>& BatchScorer::GetInputsOfPredictors() const {
    return engine->GetInputsOfPredictors();
}

const std::vector<std::string>& BatchScorer::GetCategories() const {
    return engine->GetCategories();
}

bool BatchScorer::ReadsDerivedFields() const {
    return engine->ReadsDerivedFields();
}

InputDictionary BatchScorer::MakeDictionary(std::size_t input, std::span<const std::string_view> values) const {
    return engine->MakeDictionary(input, values);
}

InputDictionary BatchScorer::MakeDictionary(std::size_t input, std::span<const double> values) const {
    return engine->MakeDictionary(input, values);
}

void BatchScorer::Score(std::span<const Column> columns, std::size_t cases,
                        const ClassificationColumns& answers) const {
    engine->Score(columns, cases, answers);
}

RowNumber BatchScorer::RowOf(std::size_t reader, std::string_view text) const {
    return engine->RowOf(reader, text);
}

RowNumber BatchScorer::RowOf(std::size_t reader, double number) const {
    return engine->RowOf(reader, number);
}

void BatchScorer::ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                            const ClassificationColumns& answers) const {
    engine->ScoreRows(rows, cases, answers);
}

}  // namespace nbscore
