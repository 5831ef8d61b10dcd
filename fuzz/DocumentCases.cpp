#include "DocumentCases.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>

namespace nbscore::fuzz {
namespace {

constexpr std::size_t numCases = 6;
constexpr std::size_t mostDeclaredValues = 3;

constexpr std::array numbers = {
    0.0, -1.0, 0.5, std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity(), 1e-300, 1e9};
constexpr std::array<std::string_view, 5> texts = {"", "nobody declares this", "1", "\xFF\xFE", "true"};

void SetValue(BaseCaseRecord& record, int position, const ScoreValue& value) {
    if (value.GetType() == ScoreValue::Numeric) {
        record.SetNumber(position, value.GetDouble());
    } else {
        record.SetText(position, value.GetString());
    }
}

/// @param choice counts up; every field goes round its own list of values.
void SetSomeValue(BaseCaseRecord& record, int position, const ScoreDictVar& field, std::size_t choice) {
    const ScoreValueLabelSet* const labels = field.GetValueLabelSet();
    const std::size_t declared = labels == nullptr ? 0 : std::min(labels->GetValueLabels().size(), mostDeclaredValues);
    const std::size_t step = choice % (declared + 3);
    if (step < declared) {
        SetValue(record, position, *labels->GetValueLabels()[step].GetValue());
    } else if (step == declared) {
        record.SetAbsent(position);
    } else if ((step == declared + 1) == (field.GetStorageType() == ScoreDictVar::NumericStorage)) {
        record.SetNumber(position, numbers[choice % numbers.size()]);
    } else {
        record.SetText(position, texts[choice % texts.size()]);
    }
}

std::vector<ScoreDictVar*> FieldsOf(const ScoreModel& model) {
    std::vector<ScoreDictVar*> fields;
    if (model.GetDictionary() != nullptr) model.GetDictionary()->GetAllVars(fields);
    return fields;
}

}  // namespace

std::vector<BaseCaseRecord> MakeCases(const ScoreModel& model) {
    const std::vector<ScoreDictVar*> fields = FieldsOf(model);
    std::vector<std::string> names;
    for (const ScoreDictVar* field : fields)
        names.push_back(field->GetName());
    std::vector<BaseCaseRecord> cases;
    for (std::size_t number = 0; number < numCases; ++number) {
        BaseCaseRecord& record = cases.emplace_back(names);
        for (std::size_t i = 0; i < fields.size(); ++i)
            SetSomeValue(record, static_cast<int>(i), *fields[i], number + i);
    }
    return cases;
}

}  // namespace nbscore::fuzz
