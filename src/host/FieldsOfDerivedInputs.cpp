#include "host/FieldsOfDerivedInputs.h"

#include <utility>
#include <vector>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"
#include "framework/SeededHash.h"

namespace nbscore {
namespace {

using Names = SeededSet<std::string>;

/// A walk from inputs to what they are computed from, each field once.
class Walk {
public:
    Walk(const TransformationDictionary& derivedFields, const DerivedFieldSources& sourcesOfFields)
        : derived(derivedFields), sources(sourcesOfFields) {}

    /// Inputs that are data fields themselves are passed over.
    void AddInput(const std::string& name) {
        if (derived.GetVar(name) != nullptr) AddDerived(name);
    }

    Names Finish() {
        while (!waiting.empty()) {
            const std::string name = std::move(waiting.back());
            waiting.pop_back();
            for (const std::string& read : sources.GetFieldsRead(name)) {
                if (derived.GetVar(read) != nullptr) {
                    AddDerived(read);
                } else {
                    dataFields.insert(read);
                }
            }
        }
        return std::move(dataFields);
    }

private:
    void AddDerived(const std::string& name) {
        if (met.insert(name).second) waiting.push_back(name);
    }

    const TransformationDictionary& derived;
    const DerivedFieldSources& sources;
    Names met;
    std::vector<std::string> waiting;
    Names dataFields;
};

}  // namespace

std::optional<Names> FindFieldsOfDerivedInputs(const ScoreModel& model) {
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    if (derived == nullptr) return Names();
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(derived);
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (sources == nullptr || description == nullptr) return std::nullopt;
    Walk walk(*derived, *sources);
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs)
            walk.AddInput(input.name);
    }
    return walk.Finish();
}

}  // namespace nbscore
