#include "framework/transform/ApplyExpression.h"

#include <algorithm>
#include <utility>

namespace nbscore {

ApplyExpression::ApplyExpression(CallParts parts, Call functionCall)
    : arguments(std::move(parts.arguments)),
      options(std::move(parts.options)),
      missingRule(parts.function.missingRule),
      call(std::move(functionCall)) {}

ExpressionValue ApplyExpression::Evaluate(const FieldValues& fields) const {
    std::vector<ExpressionValue> values;
    values.reserve(arguments.size());
    for (const auto& argument : arguments)
        values.push_back(argument->Evaluate(fields));

    if (std::ranges::none_of(values, IsMissing)) return options.ResultFor(call(values));
    if (options.mapMissingTo) return options.ResultForMissingArgument();
    switch (missingRule) {
        case MissingRule::GivesMissing:
            return options.ResultForMissingArgument();
        case MissingRule::IsLeftOut:
            return CallWithoutMissing(std::move(values));
        case MissingRule::IsSeen:
            break;
    }
    return options.ResultFor(call(values));
}

ExpressionValue ApplyExpression::CallWithoutMissing(std::vector<ExpressionValue> values) const {
    std::erase_if(values, IsMissing);
    return values.empty() ? options.ResultForMissingArgument() : options.ResultFor(call(values));
}

}  // namespace nbscore
