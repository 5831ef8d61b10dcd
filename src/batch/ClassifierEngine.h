#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/BatchInputs.h"
#include "batch/ClassificationColumns.h"
#include "batch/Column.h"
#include "batch/FactorTable.h"
#include "batch/InputDictionary.h"
#include "batch/ValueRows.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// What copies of a BatchScorer share: see there for the rules.
class ClassifierEngine {
public:
    explicit ClassifierEngine(const ModelTables& model);

    bool ReadsDerivedFields() const { return readsDerivedFields; }
    const std::vector<BatchInput>& GetInputs() const { return inputs.Get(); }
    const std::vector<std::size_t>& GetInputsOfPredictors() const { return inputsOfPredictors; }
    const std::vector<std::string>& GetCategories() const { return categories; }

    template <typename Value>
    InputDictionary MakeDictionary(std::size_t input, std::span<const Value> values) const;
    template <typename Value>
    RowNumber RowOf(std::size_t reader, Value value) const {
        return predictors.at(reader).rows.RowOf(value);
    }
    void Score(std::span<const Column> columns, std::size_t cases, const ClassificationColumns& answers) const;
    void ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                   const ClassificationColumns& answers) const;

private:
    friend class ClassifierBlocks;

    struct Predictor {
        ValueRows rows;
        FactorTable factors;
        /// Which list of the input's dictionary is the predictor's.
        std::size_t reader;
    };

    void AddPredictor(const PredictorTables& tables);
    void RequireRoom(std::size_t cases, const ClassificationColumns& answers) const;
    /// @param columns one for each predictor.
    void ScoreReadable(std::span<const Column* const> columns, std::size_t cases,
                       const ClassificationColumns& answers) const;

    /// Of the dictionaries that are made here.
    ScorerIdentity identity;
    bool readsDerivedFields;
    BatchInputs inputs;
    std::vector<std::size_t> inputsOfPredictors;
    /// The predictors that read each input, in their order.
    std::vector<std::vector<std::size_t>> readersOfInputs;
    std::vector<std::string> categories;
    std::vector<Predictor> predictors;
    AlignedNumbers priors;
    std::vector<double> targetCounts;
    /// Whether the number of every row fits into a byte.
    bool hasByteRows = true;
};

}  // namespace nbscore
