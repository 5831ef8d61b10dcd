#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldInput.h"

namespace nbscore {

/// `NormDiscrete`: 1 when a field has a certain value, else 0.
class NormDiscreteExpression : public Expression {
public:
    NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    ExpressionValue soughtValue;
};

/// Reads a NormDiscrete element. `value` has the kind of the field where it reads as one, `mapMissingTo` is a number
/// where it reads as one, and either is else a text as it stands. Throws VeskException 11 for any other `method` than
/// "indicator".
std::unique_ptr<const Expression> ReadNormDiscrete(Element element, FieldScope& scope);

}  // namespace nbscore
