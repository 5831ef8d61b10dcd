#include "host/FieldsOfDerivedInputs.h"

#include "framework/FieldsOfDerivedFields.h"
#include "framework/ModelSelfDescription.h"

namespace nbscore {

std::optional<std::set<std::string>> FindFieldsOfDerivedInputs(const ScoreModel& model) {
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    if (derived == nullptr) return std::set<std::string>();
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return std::nullopt;
    std::set<std::string> inputs;
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs)
            inputs.insert(input.name);
    }
    return FindFieldsOfDerivedFields(*derived, inputs);
}

}  // namespace nbscore
