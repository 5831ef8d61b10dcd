#pragma once

#include <vector>

#include "framework/ScoreDictVar.h"

namespace nbscore {

/// Takes the declared values of a target, in order, as the target categories. A target that declares none leaves the
/// categories as they were, deliberate; with null there is no category.
/// @param categories borrowed from the target.
inline void TakeDeclaredCategories(const ScoreDictVar* target, std::vector<ScoreValue*>& categories) {
    if (target == nullptr) {
        categories.clear();
        return;
    }
    const ScoreValueLabelSet* declared = target->GetValueLabelSet();
    if (declared == nullptr) return;
    categories.clear();
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        categories.push_back(label.GetValue());
}

}  // namespace nbscore
