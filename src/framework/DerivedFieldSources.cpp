#include "framework/DerivedFieldSources.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "framework/NumberText.h"

namespace nbscore {
namespace {

using Names = std::set<std::string>;

/// A walk from derived fields to what they are computed from, each field once.
class Walk {
public:
    Walk(const TransformationDictionary& derivedFields, const DerivedFieldSources& sourcesOfFields)
        : derived(derivedFields), sources(sourcesOfFields) {}

    void AddDerived(const std::string& name) {
        if (met.insert(name).second) waiting.push_back(name);
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
    const TransformationDictionary& derived;
    const DerivedFieldSources& sources;
    Names met;
    std::vector<std::string> waiting;
    Names dataFields;
};

}  // namespace

std::optional<Names> FindFieldsOfDerivedFields(const TransformationDictionary& derivedFields, const Names& names) {
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(&derivedFields);
    if (sources == nullptr) return std::nullopt;
    Walk walk(derivedFields, *sources);
    for (const std::string& name : names) {
        if (derivedFields.GetVar(name) != nullptr) walk.AddDerived(name);
    }
    return walk.Finish();
}

SourceFields::SourceFields(const TransformationDictionary& derivedFields, const std::string& name,
                           const ScoreDictionary& dictionary) {
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(&derivedFields);
    if (sources == nullptr) return;
    for (const std::string& source : sources->FindFewSources(name, mostFields))
        fields.emplace_back(source, dictionary.GetVar(source));
}

bool SourceFields::HaveValues(const ScoreCaseRecord& record) const {
    const auto hasValue = [&record](const auto& field) {
        const auto& [name, var] = field;
        const ScoreValue* const value = record.GetValueByName(name);
        if (value == nullptr || (var != nullptr && var->IsMissingValue(value))) return false;
        return value->GetType() != ScoreValue::Numeric || !std::isnan(value->GetDouble());
    };
    return !fields.empty() && std::ranges::all_of(fields, hasValue);
}

std::string SourceFields::ListValues(const ScoreCaseRecord& record) const {
    std::string list;
    for (const auto& [name, var] : fields) {
        const ScoreValue* const value = record.GetValueByName(name);
        if (value == nullptr) continue;
        list += list.empty() ? "" : ", ";
        list += value->GetType() == ScoreValue::Numeric ? FormatNumber(value->GetDouble()) : value->GetString();
    }
    return list;
}

}  // namespace nbscore
