#pragma once

#include "framework/transform/ExpressionValue.h"
#include "framework/transform/FieldValues.h"

namespace nbscore {

/// One expression of a derived field, compiled. It never changes after it was read: any number of threads may
/// evaluate it.
class Expression {
public:
    virtual ~Expression() = default;

    virtual ExpressionValue Evaluate(const FieldValues& fields) const = 0;

    /// Whether it has a value, and one that its field allows where it is nothing but a field.
    virtual bool IsValid(const FieldValues& fields) const { return !IsMissing(Evaluate(fields)); }
};

}  // namespace nbscore
