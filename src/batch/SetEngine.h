#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "batch/BatchInputs.h"
#include "batch/Column.h"
#include "batch/InputDictionary.h"
#include "batch/SubModelColumns.h"
#include "batch/SubModelGroup.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// What copies of a SubModelBatchScorer share: see there for the rules.
class SetEngine {
public:
    explicit SetEngine(const ModelTables& set);

    bool ReadsDerivedFields() const { return readsDerivedFields; }
    const std::vector<BatchInput>& GetInputs() const { return inputs.Get(); }
    const std::vector<std::size_t>& GetInputsOfReaders() const { return inputsOfReaders; }
    const std::vector<std::string>& GetSubModels() const { return names; }
    std::size_t GetNumPredictors() const { return numPredictors; }

    template <typename Value>
    InputDictionary MakeDictionary(std::size_t input, std::span<const Value> values) const;
    template <typename Value>
    RowNumber RowOf(std::size_t reader, Value value) const;
    void ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                   const SubModelColumns& answers) const;
    void Score(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const;

    /// A group and where its readers stand among all of the set.
    struct Part {
        SubModelGroup group;
        std::size_t firstReader;
        /// Which list of its input's dictionary is each reader's.
        std::vector<std::size_t> listsOfReaders;
    };
    const std::vector<Part>& GetParts() const { return parts; }
    std::size_t GetNumCategories() const { return numCategories; }
    /// Where a sub-model's predictors begin among all of the set.
    std::size_t GetFirstPredictor(std::size_t subModel) const { return firstPredictors[subModel]; }

private:
    void AddPart(SubModelGroup group, const ClassifierTables& member);
    void RequireRoom(std::size_t cases, const SubModelColumns& answers) const;
    /// @param columns one for each reader.
    void ScoreReadable(std::span<const Column* const> columns, std::size_t cases, const SubModelColumns& answers) const;

    /// Of the dictionaries that are made here.
    ScorerIdentity identity;
    bool readsDerivedFields;
    BatchInputs inputs;
    std::vector<std::string> names;
    std::size_t numCategories;
    std::size_t numPredictors = 0;
    std::vector<std::size_t> firstPredictors;
    std::vector<Part> parts;
    /// Those of the first part in front; and to each the part that it belongs to.
    std::vector<std::size_t> inputsOfReaders;
    std::vector<std::size_t> partsOfReaders;
    /// The readers of each input, in their order.
    std::vector<std::vector<std::size_t>> readersOfInputs;
};

}  // namespace nbscore
