#pragma once

#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"
#include "framework/ValueInterval.h"
#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/ValueKind.h"

namespace nbscore {

/// What expressions see of a variable's values: numbers, texts, or truth values, which are kept as texts. One of these
/// is a truth value where it reads as one, else the text as it stands (ReadAs).
ValueKind KindOfField(const ScoreDictVar& variable);

/// Some intervals, joined where they meet, so that whether a number lies in one of them takes no look at all of them.
class JoinedIntervals {
public:
    JoinedIntervals() = default;
    explicit JoinedIntervals(std::vector<ValueInterval> intervals);

    bool Contain(double number) const;

private:
    /// From left to right; no two meet, and none is empty.
    std::vector<ValueInterval> joined;
};

/// Which values a variable's declaration allows: none that it declares invalid; else those it declares valid, when it
/// declares any, and those inside one of its intervals, when it declares any. A NaN is never allowed, nor is a text
/// that is no truth value where the variable holds truth values.
class DeclaredValidity {
public:
    explicit DeclaredValidity(const ScoreDictVar& variable);

    /// @param value as expressions see it, or missing, which is not allowed.
    bool Allows(const ExpressionValue& value) const;

private:
    ValueKind kind;
    bool declaresValidValues;
    SeededSet<ExpressionValue> validValues;
    SeededSet<ExpressionValue> invalidValues;
    bool declaresIntervals = false;
    JoinedIntervals intervals;
};

}  // namespace nbscore
