#pragma once

#include <limits>

/// A range of valid numbers of a continuous variable, as a dictionary declares it.
struct ValueInterval {
    enum Closure { OpenOpen, OpenClosed, ClosedOpen, ClosedClosed };

    Closure closure = ClosedClosed;
    /// An absent margin is an infinite one.
    double leftMargin = -std::numeric_limits<double>::infinity();
    double rightMargin = std::numeric_limits<double>::infinity();

    bool IsClosedOnTheLeft() const { return closure == ClosedOpen || closure == ClosedClosed; }
    bool IsClosedOnTheRight() const { return closure == OpenClosed || closure == ClosedClosed; }

    bool Contains(double number) const { return BeginsAtOrBefore(number) && EndsAtOrBehind(number); }

    /// Whether the number does not lie to the left of all that is inside. An infinite margin bounds nothing: the
    /// infinity on its side is inside, whatever the closure.
    bool BeginsAtOrBefore(double number) const {
        const bool isClosed = IsClosedOnTheLeft() || leftMargin == -std::numeric_limits<double>::infinity();
        return isClosed ? number >= leftMargin : number > leftMargin;
    }
    /// The same to the right.
    bool EndsAtOrBehind(double number) const {
        const bool isClosed = IsClosedOnTheRight() || rightMargin == std::numeric_limits<double>::infinity();
        return isClosed ? number <= rightMargin : number < rightMargin;
    }
};
