#include "transform/functions/ValidityExpression.h"

#include <utility>

namespace nbscore {

ValidityExpression::ValidityExpression(CallParts parts, bool isPositive)
    : arguments(std::move(parts.arguments)), options(std::move(parts.options)), asksForValid(isPositive) {}

ExpressionValue ValidityExpression::ValueFor(const FieldValues& fields) const {
    const Expression& argument = *arguments.front();
    const ExpressionValue value = argument.Evaluate(fields);
    if (options.mapMissingTo && IsMissing(value)) return options.ResultForMissingArgument();
    return argument.IsValid(value, fields) == asksForValid;
}

}  // namespace nbscore
