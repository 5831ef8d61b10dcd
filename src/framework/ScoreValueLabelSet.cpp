#include "framework/ScoreValueLabelSet.h"

#include <utility>

void ScoreValueLabelSet::AddLabel(ScoreValueLabel label) {
    labels.push_back(std::move(label));
}
