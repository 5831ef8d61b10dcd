#pragma once

#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"
#include "framework/transform/ExpressionValue.h"
#include "framework/transform/JoinedIntervals.h"
#include "framework/transform/ValueKind.h"

namespace nbscore {

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
