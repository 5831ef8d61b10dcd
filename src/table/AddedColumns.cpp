#include "table/AddedColumns.h"

#include <algorithm>

#include "table/ModelResults.h"

namespace nbscore {
namespace {

void AddReasons(std::vector<AddedColumn>& columns, const ReasonOptions& reasons) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < reasons.most; ++i) {
        const std::string place = "reason_" + std::to_string(i + 1);
        for (const char* part : {"_field", "_value", "_weight"})
            columns.push_back({place + part, AddedColumn::Reason, number++});
    }
}

}  // namespace

std::vector<AddedColumn> ListAddedColumns(const ScoreDictVar& target, const ScoreWriterOptions& options) {
    std::vector<AddedColumn> columns = {{"predicted_" + target.GetName(), AddedColumn::Prediction}};
    if (!options.predictionOnly) {
        columns.push_back({"confidence", AddedColumn::Posterior});
        const CategoryProbabilities categories(target);
        for (std::size_t i = 0; i < categories.GetNames().size(); ++i)
            columns.push_back({"probability_" + categories.GetNames()[i], AddedColumn::Posterior, 1 + i});
    }
    AddReasons(columns, options.reasons);
    return columns;
}

std::vector<AddedColumn> ListAddedColumns(const std::vector<OutputColumn>& outputs, const ScoreWriterOptions& options) {
    std::vector<AddedColumn> columns;
    for (std::size_t i = 0; i < outputs.size(); ++i)
        columns.push_back({outputs[i].name, AddedColumn::Output, i});
    AddReasons(columns, options.reasons);
    return columns;
}

std::vector<AddedColumn> ListAddedColumns(const std::vector<std::string>& labels, const ScoreWriterOptions& options) {
    std::vector<AddedColumn> columns;
    if (options.subModels.longRows) {
        columns = {{"model", AddedColumn::Label}, {"score", AddedColumn::Score}};
        if (options.predictionOnly) return columns;
        columns.push_back({"assessment_mean", AddedColumn::Assessment});
        columns.push_back({"assessment_std_dev", AddedColumn::Assessment, 1});
    } else if (options.subModels.best) {
        for (std::size_t i = 0; i < std::min(*options.subModels.best, labels.size()); ++i) {
            const std::string place = "best_" + std::to_string(i + 1);
            columns.push_back({place + "_model", AddedColumn::Label, i});
            columns.push_back({place + "_score", AddedColumn::Score, i});
        }
    } else {
        for (std::size_t i = 0; i < labels.size(); ++i)
            columns.push_back({"score_" + labels[i], AddedColumn::Score, i});
    }
    return columns;
}

}  // namespace nbscore
