#include "framework/ScoreValueLabel.h"

#include <utility>

#include "framework/ScoreValueLabelSet.h"

ScoreValueLabel::ScoreValueLabel(std::unique_ptr<ScoreValue> declaredValue, std::string shownText)
    : value(std::move(declaredValue)), displayValue(std::move(shownText)) {}

ScoreValueLabel::ScoreValueLabel(const ScoreValueLabel& other)
    : value(other.value ? other.value->Clone() : nullptr), displayValue(other.displayValue) {}

ScoreValueLabel& ScoreValueLabel::operator=(const ScoreValueLabel& other) {
    return *this = ScoreValueLabel(other);
}

void ScoreValueLabelSet::AddLabel(ScoreValueLabel label) {
    labels.push_back(std::move(label));
}
