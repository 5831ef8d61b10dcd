#pragma once

#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/FieldValues.h"

namespace nbscore {

/// One expression of a derived field, compiled. It never changes after it was read: any number of threads may
/// evaluate it.
class Expression {
public:
    virtual ~Expression() = default;

    /// Its value; missing when that is a text and no work is left to go on with it.
    ExpressionValue Evaluate(const FieldValues& fields) const { return fields.WithinBudget(ValueFor(fields)); }

    /// Whether it has a value, which is no NaN, and one that its field allows where it is nothing but a field.
    /// @param value what it has just given for these fields: nothing is evaluated a second time, because expressions
    ///     nest and twice at each level is without end.
    virtual bool IsValid(const ExpressionValue& value, const FieldValues& /*fields*/) const {
        return IsValidByItself(value);
    }

private:
    virtual ExpressionValue ValueFor(const FieldValues& fields) const = 0;
};

}  // namespace nbscore
