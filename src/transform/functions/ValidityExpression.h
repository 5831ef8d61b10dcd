#pragma once

#include <memory>
#include <vector>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// `isValid`, `isNotValid`: whether the argument has a value that its field allows.
class ValidityExpression : public Expression {
public:
    /// @param isPositive false for the negation.
    ValidityExpression(CallParts parts, bool isPositive);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    bool asksForValid;
};

}  // namespace nbscore
