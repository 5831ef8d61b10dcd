#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "batch/CaseValues.h"
#include "batch/Column.h"
#include "batch/ColumnScorer.h"
#include "batch/TreatedInput.h"
#include "framework/ModelTables.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoringRule.h"
#include "framework/SeededHash.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// Scores by the standard's rule. Values are treated here; then a case is scored by the arithmetic that the model uses
/// (StandardProduct).
class StandardBatch : public ColumnScorer {
public:
    /// @param model of the standard's rule, and scorable from its tables (GetScorableTables).
    explicit StandardBatch(const ModelTables& model);

    bool IsSet() const override { return false; }
    bool ReadsDerivedFields() const override { return readsDerivedFields; }
    const std::vector<BatchInput>& GetInputs() const override { return inputs; }
    const std::vector<std::size_t>& GetInputsOfPredictors() const override { return inputsOfPredictors; }
    const std::vector<std::string>& GetCategories() const override { return categories; }
    const std::vector<std::string>& GetSubModels() const override { return noSubModels; }

    InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                   const Validity& validity = {}) const override;
    InputDictionary MakeDictionary(std::size_t input, std::span<const double> values,
                                   const Validity& validity = {}) const override;
    void Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const override;
    std::unique_ptr<PreparedRow> MakeRow(std::shared_ptr<const ColumnScorer> self) const override;

private:
    class Call;
    class Row;

    /// @param treatment null for a derived field.
    void AddInput(const ScoreDictVar& var, PredictorTables::Kind kind, const FieldTreatment* treatment);
    template <typename Value>
    InputDictionary LookUp(std::size_t input, std::span<const Value> values, const Validity& validity) const;

    /// Of the dictionaries that are made here.
    ScorerIdentity identity;
    bool readsDerivedFields;
    double threshold;
    DensityFloor densityFloor;
    std::vector<double> priors;
    /// Of a case without a result; empty where it has none.
    std::vector<double> targetPriors;
    std::vector<std::string> categories;
    std::vector<std::string> noSubModels;
    std::vector<BatchInput> inputs;
    std::vector<TreatedInput> treatedInputs;
    SeededMap<std::string, std::size_t> positionsOfInputs;
    std::vector<std::size_t> inputsOfPredictors;
    /// For each predictor its place among those of its input.
    std::vector<std::size_t> placesOfPredictors;
};

}  // namespace nbscore
