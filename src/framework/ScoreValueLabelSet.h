#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/ScoreValueLabel.h"

/// The declared values of a variable, in the order in which the document declares them.
class SCOREFRAMEWORK_API ScoreValueLabelSet {
public:
    void AddLabel(ScoreValueLabel label);
    const std::vector<ScoreValueLabel>& GetValueLabels() const { return labels; }

private:
    std::vector<ScoreValueLabel> labels;
};
