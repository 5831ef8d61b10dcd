#include "host/BatchCases.h"

#include <stdexcept>
#include <utility>

#include "framework/MCMV.h"
#include "framework/ModelSelfDescription.h"
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
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return nullptr;
    try {
        auto engine = std::make_shared<const BatchEngine>(model);
        if (engine->IsSet()) {
            return std::make_unique<SubModelBatch>(std::move(engine), DescribeSubModels(*description));
        }
        return std::make_unique<ClassifierBatch>(std::move(engine), *model.GetTargetVar(), predictionOnly);
    } catch (const std::invalid_argument&) {
        return nullptr;
    }
}

}  // namespace nbscore
