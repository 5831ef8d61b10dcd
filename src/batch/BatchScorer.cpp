#include "batch/BatchScorer.h"

#include "batch/BatchEngine.h"

namespace nbscore {

BatchScorer::BatchScorer(const ScoreModel& model) : engine(std::make_shared<BatchEngine>(model)) {}

bool BatchScorer::IsSet() const {
    return engine->IsSet();
}

const std::vector<BatchInput>& BatchScorer::GetInputs() const {
    return engine->GetInputs();
}

const std::vector<std::size_t>& BatchScorer::GetInputsOfPredictors() const {
    return engine->GetInputsOfPredictors();
}

const std::vector<std::string>& BatchScorer::GetCategories() const {
    return engine->GetCategories();
}

const std::vector<std::string>& BatchScorer::GetSubModels() const {
    return engine->GetSubModels();
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

void BatchScorer::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    engine->Score(columns, cases, answers);
}

}  // namespace nbscore
