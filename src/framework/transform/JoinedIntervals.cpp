#include "framework/transform/JoinedIntervals.h"

#include <algorithm>

namespace nbscore {
namespace {

ValueInterval::Closure ClosureOf(bool isClosedOnTheLeft, bool isClosedOnTheRight) {
    if (isClosedOnTheLeft) return isClosedOnTheRight ? ValueInterval::ClosedClosed : ValueInterval::ClosedOpen;
    return isClosedOnTheRight ? ValueInterval::OpenClosed : ValueInterval::OpenOpen;
}

bool IsEmpty(const ValueInterval& interval) {
    if (interval.leftMargin == interval.rightMargin) return interval.closure != ValueInterval::ClosedClosed;
    return !(interval.leftMargin < interval.rightMargin);
}

bool BeginsBefore(const ValueInterval& left, const ValueInterval& right) {
    if (left.leftMargin != right.leftMargin) return left.leftMargin < right.leftMargin;
    return left.IsClosedOnTheLeft() && !right.IsClosedOnTheLeft();
}

/// Whether there is nothing between them; the first begins no later than the second.
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

}  // namespace

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

}  // namespace nbscore
