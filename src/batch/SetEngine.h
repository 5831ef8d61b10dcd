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

    const std::vector<BatchInput>& GetInputs() const { return inputs.Get(); }
    const std::vector<std::string>& GetSubModels() const { return names; }
    std::size_t GetNumPredictors() const { return numPredictors; }

    template <typename Value>
    InputDictionary MakeDictionary(std::size_t input, std::span<const Value> values) const;
    void Score(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const;

    /// A group and what its readers are to the set.
    struct Part {
        SubModelGroup group;
        std::vector<std::size_t> inputsOfReaders;
        /// Which list of its input's dictionary is each reader's.
        std::vector<std::size_t> listsOfReaders;
    };
    const std::vector<Part>& GetParts() const { return parts; }
    std::size_t GetNumCategories() const { return numCategories; }
    /// Where a sub-model's predictors begin among all of the set.
    std::size_t GetFirstPredictor(std::size_t subModel) const { return firstPredictors[subModel]; }

private:
    void RequireFitting(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const;

    BatchInputs inputs;
    std::vector<std::string> names;
    std::size_t numCategories;
    std::size_t numPredictors = 0;
    std::vector<std::size_t> firstPredictors;
    std::vector<Part> parts;
};

}  // namespace nbscore
