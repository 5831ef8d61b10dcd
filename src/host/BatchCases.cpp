#include "host/BatchCases.h"

#include <stdexcept>

#include "framework/MCMV.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "host/ClassifierBatch.h"
#include "host/SubModelBatch.h"

namespace nbscore {
namespace {

std::vector<SubModelScore> DescribeSubModels(const ModelSelfDescription& set) {
    std::vector<SubModelScore> descriptors;
    for (const ClassifierDescription& subModel : set.Describe().classifiers)
        descriptors.push_back({subModel.name, MCMV::gMissingValue, subModel.assessmentMean, subModel.assessmentStdDev});
    return descriptors;
}

}  // namespace

std::unique_ptr<BatchCases> MakeBatchCases(const ScoreModel& model, bool predictionOnly) {
    const auto* const tables = dynamic_cast<const ModelSelfTables*>(&model);
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (tables == nullptr || description == nullptr) return nullptr;
    try {
        if (tables->GetTables().isSet) {
            return std::make_unique<SubModelBatch>(SubModelBatchScorer(model), DescribeSubModels(*description));
        }
        return std::make_unique<ClassifierBatch>(BatchScorer(model), *model.GetTargetVar(), predictionOnly);
    } catch (const std::invalid_argument&) {
        return nullptr;
    }
}

}  // namespace nbscore
