#include "framework/transform/DeclaredValidity.h"

#include "framework/BaseDictVar.h"
#include "framework/transform/FieldKind.h"

namespace nbscore {
namespace {

ExpressionValue Declared(const ScoreValue& value, ValueKind kind) {
    return kind == ValueKind::Number ? ExpressionValue(value.GetDouble()) : ReadAs(kind, value.GetString());
}

}  // namespace

DeclaredValidity::DeclaredValidity(const ScoreDictVar& variable)
    : kind(KindOfField(variable)), declaresValidValues(variable.GetValueLabelSet() != nullptr) {
    if (declaresValidValues) {
        for (const ScoreValueLabel& label : variable.GetValueLabelSet()->GetValueLabels())
            validValues.insert(Declared(*label.GetValue(), kind));
    }
    // Only the framework's own variables know of invalid values and intervals.
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    if (declared == nullptr) return;
    for (const auto& value : declared->GetInvalidValues())
        invalidValues.insert(Declared(*value, kind));
    declaresIntervals = !declared->GetIntervals().empty();
    intervals = JoinedIntervals(declared->GetIntervals());
}

bool DeclaredValidity::Allows(const ExpressionValue& value) const {
    if (!IsValidByItself(value) || invalidValues.contains(value)) return false;
    if (kind == ValueKind::Truth && !std::holds_alternative<bool>(value)) return false;
    if (declaresValidValues && !validValues.contains(value)) return false;
    const auto* number = std::get_if<double>(&value);
    return number == nullptr || !declaresIntervals || intervals.Contain(*number);
}

}  // namespace nbscore
