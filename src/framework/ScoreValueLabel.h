#pragma once

#include <memory>
#include <string>

#include "framework/Export.h"
#include "framework/ScoreValue.h"

/// One declared value of a variable and the name shown for it.
class SCOREFRAMEWORK_API ScoreValueLabel {
public:
    ScoreValueLabel(std::unique_ptr<ScoreValue> declaredValue, std::string shownText);
    ScoreValueLabel(const ScoreValueLabel& other);
    ScoreValueLabel& operator=(const ScoreValueLabel& other);
    ScoreValueLabel(ScoreValueLabel&&) noexcept = default;
    ScoreValueLabel& operator=(ScoreValueLabel&&) noexcept = default;

    /// The declared value. The label owns it; it lives and stays where it is for as long as the label's set.
    ScoreValue* GetValue() const { return value.get(); }
    /// The name shown for the value; empty when the document gives none.
    const std::string& GetDisplayValue() const { return displayValue; }

private:
    std::unique_ptr<ScoreValue> value;
    std::string displayValue;
};
