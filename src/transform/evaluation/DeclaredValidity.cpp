#include "transform/evaluation/DeclaredValidity.h"

#include <algorithm>

#include "framework/BaseDictVar.h"

namespace nbscore {
namespace {

ValueInterval::Closure ClosureOf(bool isClosedOnTheLeft, bool isClosedOnTheRight) {
    if (isClosedOnTheLeft) return isClosedOnTheRight ? ValueInterval::ClosedClosed : ValueInterval::ClosedOpen;
    return isClosedOnTheRight ? ValueInterval::OpenClosed : ValueInterval::OpenOpen;
}

/// Whether there is no gap between two intervals of which the first begins no later than the second.
bool Meet(const ValueInterval& first, const ValueInterval& second) {
    if (first.rightMargin != second.leftMargin) return second.leftMargin < first.rightMargin;
    return first.IsClosedOnTheRight() || second.IsClosedOnTheLeft();
}

void Extend(ValueInterval& interval, const ValueInterval& other) {
    const bool isFarther = other.rightMargin > interval.rightMargin;
    const bool isAsFar = other.rightMargin == interval.rightMargin;
    const bool isClosed =
        (isFarther ? false : interval.IsClosedOnTheRight()) || ((isFarther || isAsFar) && other.IsClosedOnTheRight());
    if (isFarther) interval.rightMargin = other.rightMargin;
    interval.closure = ClosureOf(interval.IsClosedOnTheLeft(), isClosed);
}

ExpressionValue Declared(const ScoreValue& value, ValueKind kind) {
    return kind == ValueKind::Number ? ExpressionValue(value.GetDouble()) : ReadAs(kind, value.GetString());
}

}  // namespace

ValueKind KindOfField(const ScoreDictVar& variable) {
    if (variable.GetStorageType() == ScoreDictVar::NumericStorage) return ValueKind::Number;
    // Only the framework's own variables know truth values.
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    return declared != nullptr && declared->HoldsTruthValues() ? ValueKind::Truth : ValueKind::Text;
}

bool IsEmpty(const ValueInterval& interval) {
    if (interval.leftMargin == interval.rightMargin) return interval.closure != ValueInterval::ClosedClosed;
    return !(interval.leftMargin < interval.rightMargin);
}

bool BeginsBefore(const ValueInterval& left, const ValueInterval& right) {
    if (left.leftMargin != right.leftMargin) return left.leftMargin < right.leftMargin;
    return left.IsClosedOnTheLeft() && !right.IsClosedOnTheLeft();
}

JoinedIntervals::JoinedIntervals(std::vector<ValueInterval> intervals) {
    std::erase_if(intervals, IsEmpty);
    std::ranges::sort(intervals, BeginsBefore);
    for (const ValueInterval& interval : intervals) {
        if (!joined.empty() && Meet(joined.back(), interval)) {
            Extend(joined.back(), interval);
        } else {
            joined.push_back(interval);
        }
    }
}

bool JoinedIntervals::Contain(double number) const {
    const auto candidate = std::ranges::partition_point(
        joined, [number](const ValueInterval& interval) { return !interval.EndsAtOrBehind(number); });
    return candidate != joined.end() && candidate->Contains(number);
}

DeclaredValidity::DeclaredValidity(const ScoreDictVar& variable)
    : kind(KindOfField(variable)), declaresValidValues(variable.GetValueLabelSet() != nullptr) {
    if (declaresValidValues) {
        for (const ScoreValueLabel& label : variable.GetValueLabelSet()->GetValueLabels())
            validValues.insert(Declared(*label.GetValue(), kind));
    }
    // Only the framework's own variables know invalid values and intervals.
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
