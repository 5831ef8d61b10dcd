#pragma once

#include <limits>

/// A range of valid numbers of a continuous variable, as a dictionary declares it.
struct ValueInterval {
    enum Closure { OpenOpen, OpenClosed, ClosedOpen, ClosedClosed };

    Closure closure = ClosedClosed;
    /// An absent margin is an infinite one.
    double leftMargin = -std::numeric_limits<double>::infinity();
    double rightMargin = std::numeric_limits<double>::infinity();

    bool Contains(double number) const {
        const bool leftClosed = closure == ClosedOpen || closure == ClosedClosed;
        const bool rightClosed = closure == OpenClosed || closure == ClosedClosed;
        return (leftClosed ? number >= leftMargin : number > leftMargin) &&
               (rightClosed ? number <= rightMargin : number < rightMargin);
    }
};
