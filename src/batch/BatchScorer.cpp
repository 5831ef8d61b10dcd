#include "batch/BatchScorer.h"

#include "batch/BatchEngine.h"
#include "batch/ColumnScorer.h"
#include "batch/StandardBatch.h"

namespace nbscore {
namespace {

std::shared_ptr<const ColumnScorer> MakeScorer(const ScoreModel& model) {
    const ModelTables tables = GetScorableTables(model);
    if (tables.rule == ScoringRule::Standard) return std::make_shared<StandardBatch>(tables);
    return std::make_shared<BatchEngine>(tables);
}

}  // namespace

BatchScorer::BatchScorer(const ScoreModel& model) : scorer(MakeScorer(model)) {}

bool BatchScorer::IsSet() const {
    return scorer->IsSet();
}

const std::vector<BatchInput>& BatchScorer::GetInputs() const {
    return scorer->GetInputs();
}

const std::vector<std::size_t>& BatchScorer::GetInputsOfPredictors() const {
    return scorer->GetInputsOfPredictors();
}

const std::vector<std::string>& BatchScorer::GetCategories() const {
    return scorer->GetCategories();
}

const std::vector<std::string>& BatchScorer::GetSubModels() const {
    return scorer->GetSubModels();
}

bool BatchScorer::ReadsDerivedFields() const {
    return scorer->ReadsDerivedFields();
}

InputDictionary BatchScorer::MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                            const Validity& validity) const {
    return scorer->MakeDictionary(input, values, validity);
}

InputDictionary BatchScorer::MakeDictionary(std::size_t input, std::span<const double> values,
                                            const Validity& validity) const {
    return scorer->MakeDictionary(input, values, validity);
}

void BatchScorer::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    scorer->Score(columns, cases, answers);
}

std::unique_ptr<PreparedRow> BatchScorer::MakeRow() const {
    return scorer->MakeRow(scorer);
}

}  // namespace nbscore
