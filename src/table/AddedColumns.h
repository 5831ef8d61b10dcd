#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/ModelOutputs.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreModel.h"
#include "table/TableOptions.h"

namespace nbscore {

/// A column that scoring adds to a table.
struct AddedColumn {
    enum Content { Prediction, Posterior, Output, Label, Score, Assessment, Reason };

    std::string name;
    Content content;
    /// Which one: of the outputs, or of the sub-models that a row shows. Of posterior probabilities 0 is the
    /// confidence, and behind it stand those of the target's categories. Of assessments 0 is the mean, 1 the standard
    /// deviation; both are always shown. Of reasons three belong together: the predictor, its value, its weight.
    std::size_t number = 0;
};

/// For a single classifier: `predicted_<target>`, `confidence` and `probability_<category>` for each target category;
/// behind them, where reasons are asked for, `reason_1_field`, `reason_1_value`, `reason_1_weight`, `reason_2_field` and
/// so on.
std::vector<AddedColumn> ListAddedColumns(const ScoreDictVar& target, const ScoreWriterOptions& options);

/// For a single classifier whose document names the columns itself; behind them those of reasons.
std::vector<AddedColumn> ListAddedColumns(const std::vector<OutputColumn>& outputs, const ScoreWriterOptions& options);

/// For a set of sub-models: `score_<label>` for each; or of the best ones `best_1_model`, `best_1_score`,
/// `best_2_model` and so on; or, of a row for each case and sub-model, `model` (the label), `score`, `assessment_mean`
/// and `assessment_std_dev`.
/// @param labels of the sub-models (LabelSubModels).
std::vector<AddedColumn> ListAddedColumns(const std::vector<std::string>& labels, const ScoreWriterOptions& options);

}  // namespace nbscore
