#pragma once

#include <memory>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"
#include "framework/ValueInterval.h"
#include "transform/evaluation/ExpressionValue.h"

namespace nbscore {

/// What a variable's values are to expressions: numbers, texts, or truth values. These are stored as texts, and one
/// that does not read as a truth value stays a text (ReadAs).
SCOREFRAMEWORK_API ValueKind KindOfField(const ScoreDictVar& variable);

/// Whether no number lies in the interval.
bool IsEmpty(const ValueInterval& interval);

/// Orders intervals from left to right by where they begin.
bool BeginsBefore(const ValueInterval& left, const ValueInterval& right);

/// Some intervals, joined where they meet and sorted, so that a number is looked up by binary search.
class JoinedIntervals {
public:
    JoinedIntervals() = default;
    explicit JoinedIntervals(std::vector<ValueInterval> intervals);

    bool Contain(double number) const;

private:
    /// From left to right; no two meet, and none is empty.
    std::vector<ValueInterval> joined;
};

/// Which values a variable's declaration allows: none that it declares invalid; if it declares valid values, only
/// these; if it declares intervals, only numbers inside one of them. NaN is never allowed, nor is a text that is no
/// truth value where the variable holds truth values.
///
/// By the standard's rule truth values are declared in any spelling (AsTruthText), and a continuous variable that
/// declares valid values and intervals allows both: a producer lists what a number outside the range stands for.
class DeclaredValidity {
public:
    explicit DeclaredValidity(const ScoreDictVar& variable);

    /// @param value as expressions see it. Missing is not allowed.
    bool Allows(const ExpressionValue& value) const;

private:
    /// What is declared.
    struct Values {
        Values(const ScoreDictVar& variable, ValueKind kind);

        bool declaresValidValues;
        SeededSet<ExpressionValue> valid;
        SeededSet<ExpressionValue> invalid;
        bool declaresIntervals = false;
        /// Whether a number need not be both among the valid values and inside an interval.
        bool eitherIsEnough = false;
        JoinedIntervals intervals;

        bool Allow(const ExpressionValue& value) const;
    };

    ValueKind kind;
    /// Null where nothing is declared, as of most derived fields: they take no memory for it.
    std::unique_ptr<const Values> values;
};

}  // namespace nbscore
