#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "batch/BatchInput.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// Collects the fields that predictors read, each once.
class BatchInputs {
public:
    /// The position of a predictor's field.
    std::size_t Add(const PredictorTables& predictor);

    const std::vector<BatchInput>& Get() const { return inputs; }

private:
    std::vector<BatchInput> inputs;
    SeededMap<std::string, std::size_t> positions;
};

}  // namespace nbscore
