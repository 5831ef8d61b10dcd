#pragma once

#include <memory>

#include "pmml/DocumentTree.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/FieldInput.h"

namespace nbscore {

/// `FieldRef`: the value of a data field, of another derived field, or of a parameter.
class FieldRefExpression : public Expression {
public:
    explicit FieldRefExpression(FieldInput readField);

    /// A missing value that is replaced is as valid as its replacement is present.
    bool IsValid(const ExpressionValue& value, const FieldValues& fields) const override;

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
};

/// Reads a FieldRef element. `mapMissingTo` has the kind of the field that it stands in for where it reads as one, else
/// it is a text as it stands.
std::unique_ptr<const Expression> ReadFieldRef(Element element, FieldScope& scope);

}  // namespace nbscore
