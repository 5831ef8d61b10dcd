#include "framework/transform/DeclaredValidity.h"

#include <algorithm>
#include <cmath>

#include "framework/BaseDictVar.h"

namespace nbscore {

DeclaredValidity::DeclaredValidity(const ScoreDictVar& variable)
    : declaresValues(variable.GetValueLabelSet() != nullptr) {
    const bool isNumeric = variable.GetStorageType() == ScoreDictVar::NumericStorage;
    if (declaresValues) {
        for (const ScoreValueLabel& label : variable.GetValueLabelSet()->GetValueLabels()) {
            if (isNumeric) {
                numbers.insert(label.GetValue()->GetDouble());
            } else {
                texts.insert(label.GetValue()->GetString());
            }
        }
    }
    // Only the framework's own variables know of intervals.
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    if (declared != nullptr) intervals = declared->GetIntervals();
}

bool DeclaredValidity::Allows(const ExpressionValue& value) const {
    if (const auto* number = std::get_if<double>(&value)) return AllowsNumber(*number);
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr && (!declaresValues || texts.contains(*text));
}

bool DeclaredValidity::AllowsNumber(double number) const {
    if (std::isnan(number)) return false;
    if (declaresValues && !numbers.contains(number)) return false;
    return intervals.empty() || std::ranges::any_of(intervals, [number](const ValueInterval& interval) {
               return interval.Contains(number);
           });
}

}  // namespace nbscore
