#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "batch/BatchInput.h"

namespace nbscore {

/// Collects the fields that predictors read, each once.
class BatchInputs {
public:
    /// The position of a predictor's field.
    std::size_t Add(const PredictorTables& predictor);

    const std::vector<BatchInput>& Get() const { return inputs; }

private:
    std::vector<BatchInput> inputs;
    std::unordered_map<std::string, std::size_t> positions;
};

}  // namespace nbscore
