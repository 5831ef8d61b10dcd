#include "transform/evaluation/DeclaredValidity.h"

#include <algorithm>
#include <string>
#include <utility>

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

ExpressionValue Declared(const ScoreValue& value, ValueKind kind, bool byStandard) {
    if (kind == ValueKind::Number) return value.GetDouble();
    std::string text = value.GetString();
    if (byStandard && kind == ValueKind::Truth) text = AsTruthText(text);
    return ReadAs(kind, std::move(text));
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

DeclaredValidity::DeclaredValidity(const ScoreDictVar& variable) : kind(KindOfField(variable)) {
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    const bool declaresMore =
        declared != nullptr && !(declared->GetInvalidValues().empty() && declared->GetIntervals().empty());
    if (variable.GetValueLabelSet() == nullptr && !declaresMore) return;
    values = std::make_unique<const Values>(variable, kind);
}

DeclaredValidity::Values::Values(const ScoreDictVar& variable, ValueKind kind)
    : declaresValidValues(variable.GetValueLabelSet() != nullptr) {
    // Only the framework's own variables know their rule, invalid values and intervals.
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    const bool byStandard = declared != nullptr && declared->GetRule() == ScoringRule::Standard;
    if (declaresValidValues) {
        for (const ScoreValueLabel& label : variable.GetValueLabelSet()->GetValueLabels())
            valid.insert(Declared(*label.GetValue(), kind, byStandard));
    }
    if (declared == nullptr) return;
    for (const auto& value : declared->GetInvalidValues())
        invalid.insert(Declared(*value, kind, byStandard));
    declaresIntervals = !declared->GetIntervals().empty();
    intervals = JoinedIntervals(declared->GetIntervals());
    eitherIsEnough = byStandard && variable.GetMeasureLevel() == ScoreDictVar::Continuous && declaresValidValues &&
                     declaresIntervals;
}

bool DeclaredValidity::Allows(const ExpressionValue& value) const {
    if (!IsValidByItself(value)) return false;
    if (kind == ValueKind::Truth && !std::holds_alternative<bool>(value)) return false;
    return !values || values->Allow(value);
}

bool DeclaredValidity::Values::Allow(const ExpressionValue& value) const {
    if (invalid.contains(value)) return false;
    const bool isListed = !declaresValidValues || valid.contains(value);
    const auto* number = std::get_if<double>(&value);
    if (number == nullptr || (isListed && eitherIsEnough)) return isListed;
    return (isListed || eitherIsEnough) && (!declaresIntervals || intervals.Contain(*number));
}

}  // namespace nbscore
