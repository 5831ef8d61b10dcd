#include "transform/functions/ApplyExpression.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

ApplyExpression::Call OwnCallOf(const BuiltInFunction& function) {
    if (function.callWithin != nullptr) return function.callWithin;
    return [call = function.call](Arguments arguments, WorkBudget&) { return call(arguments); };
}

}  // namespace

ApplyExpression::ApplyExpression(CallParts parts, Call functionCall)
    : arguments(std::move(parts.arguments)),
      options(std::move(parts.options)),
      missingRule(parts.function.missingRule),
      call(functionCall ? std::move(functionCall) : OwnCallOf(parts.function)) {}

ExpressionValue ApplyExpression::ValueFor(const FieldValues& fields) const {
    WorkBudget& budget = fields.Budget();
    budget.NoteCall();
    std::vector<ExpressionValue> values;
    values.reserve(arguments.size());
    for (const auto& argument : arguments)
        values.push_back(argument->Evaluate(fields));

    if (std::ranges::none_of(values, IsMissing)) return options.ResultFor(call(values, budget));
    if (options.mapMissingTo) return options.ResultForMissingArgument();
    switch (missingRule) {
        case MissingRule::GivesMissing:
            return options.ResultForMissingArgument();
        case MissingRule::IsLeftOut:
            return CallWithoutMissing(std::move(values), budget);
        case MissingRule::IsSeen:
            break;
    }
    return options.ResultFor(call(values, budget));
}

ExpressionValue ApplyExpression::CallWithoutMissing(std::vector<ExpressionValue> values, WorkBudget& budget) const {
    std::erase_if(values, IsMissing);
    return values.empty() ? options.ResultForMissingArgument() : options.ResultFor(call(values, budget));
}

}  // namespace nbscore
