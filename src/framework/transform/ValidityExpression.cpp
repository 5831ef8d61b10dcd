#include "framework/transform/ValidityExpression.h"

#include <utility>

namespace nbscore {

ValidityExpression::ValidityExpression(CallParts parts, bool isPositive)
    : arguments(std::move(parts.arguments)), options(std::move(parts.options)), asksForValid(isPositive) {}

ExpressionValue ValidityExpression::Evaluate(const FieldValues& fields) const {
    const Expression& argument = *arguments.front();
    if (options.mapMissingTo && IsMissing(argument.Evaluate(fields))) return options.ResultForMissingArgument();
    return argument.IsValid(fields) == asksForValid;
}

}  // namespace nbscore
