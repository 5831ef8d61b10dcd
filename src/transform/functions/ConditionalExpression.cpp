#include "transform/functions/ConditionalExpression.h"

#include <utility>

#include "transform/evaluation/ValueReading.h"

namespace nbscore {
namespace {

enum Argument { Condition, Then, Else };

}  // namespace

ConditionalExpression::ConditionalExpression(CallParts parts)
    : arguments(std::move(parts.arguments)), options(std::move(parts.options)) {}

// A condition that is no truth value is undefined, which is missing. Without a third argument, so is what a false one
// chooses.
ExpressionValue ConditionalExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue condition = arguments[Condition]->Evaluate(fields);
    if (IsMissing(condition)) return options.ResultForMissingArgument();
    const auto truth = TruthOf(condition);
    if (!truth || (!*truth && arguments.size() <= Else)) return options.ResultFor({});
    ExpressionValue chosen = arguments[*truth ? Then : Else]->Evaluate(fields);
    return IsMissing(chosen) ? options.ResultForMissingArgument() : options.ResultFor(std::move(chosen));
}

}  // namespace nbscore
