#include "batch/BatchInputs.h"

namespace nbscore {

std::size_t BatchInputs::Add(const PredictorTables& predictor) {
    const auto [entry, isNew] = positions.try_emplace(predictor.var->GetName(), inputs.size());
    if (isNew) inputs.push_back({entry->first, predictor.kind});
    return entry->second;
}

}  // namespace nbscore
