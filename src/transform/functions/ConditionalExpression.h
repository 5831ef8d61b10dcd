#pragma once

#include <memory>
#include <vector>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// `if`: evaluates its condition and then only the branch that it chooses. What the other would have given, or would
/// have been undefined in, plays no part.
class ConditionalExpression : public Expression {
public:
    explicit ConditionalExpression(CallParts parts);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
};

}  // namespace nbscore
