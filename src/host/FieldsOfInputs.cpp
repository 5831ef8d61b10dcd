#include "host/FieldsOfInputs.h"

#include <utility>
#include <vector>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"

namespace nbscore {
namespace {

/// A walk from inputs to what they are computed from, each field once.
class Walk {
public:
    /// @param derivedFields may be null, and then so are the sources.
    Walk(const TransformationDictionary* derivedFields, const DerivedFieldSources* sourcesOfFields)
        : derived(derivedFields), sources(sourcesOfFields) {}

    void AddInput(const std::string& name) {
        if (!AddDerived(name)) fields.asTheyAre.insert(name);
    }

    FieldsOfInputs Finish() {
        while (!waiting.empty()) {
            const std::string name = std::move(waiting.back());
            waiting.pop_back();
            for (const std::string& read : sources->GetFieldsRead(name)) {
                if (!AddDerived(read)) fields.ofDerivedInputs.insert(read);
            }
        }
        return std::move(fields);
    }

private:
    /// False for a name that is no derived field's.
    bool AddDerived(const std::string& name) {
        if (derived == nullptr || derived->GetVar(name) == nullptr) return false;
        if (met.insert(name).second) waiting.push_back(name);
        return true;
    }

    const TransformationDictionary* derived;
    const DerivedFieldSources* sources;
    std::unordered_set<std::string> met;
    std::vector<std::string> waiting;
    FieldsOfInputs fields;
};

}  // namespace

std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model) {
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(derived);
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr || (derived != nullptr && sources == nullptr)) return std::nullopt;
    Walk walk(derived, sources);
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs)
            walk.AddInput(input.name);
    }
    return walk.Finish();
}

}  // namespace nbscore
