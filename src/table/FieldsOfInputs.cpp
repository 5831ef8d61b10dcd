#include "table/FieldsOfInputs.h"

#include <utility>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"

namespace nbscore {

std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model) {
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return std::nullopt;
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    FieldsOfInputs fields;
    std::set<std::string> derivedInputs;
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs) {
            const bool isDerived = derived != nullptr && derived->GetVar(input.name) != nullptr;
            (isDerived ? derivedInputs : fields.asTheyAre).insert(input.name);
        }
    }
    if (derived == nullptr) return fields;
    auto read = FindFieldsOfDerivedFields(*derived, derivedInputs);
    if (!read) return std::nullopt;
    fields.ofDerivedInputs = std::move(*read);
    return fields;
}

}  // namespace nbscore
