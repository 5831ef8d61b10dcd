#include "transform/functions/Conditional.h"

#include <memory>
#include <utility>

#include "transform/functions/ConditionalExpression.h"

namespace nbscore {
namespace {

std::unique_ptr<const Expression> MakeIf(CallParts parts) {
    return std::make_unique<ConditionalExpression>(std::move(parts));
}

constexpr BuiltInFunction functions[] = {
    {"if", "condition, then[, else]", 2, 3, MissingRule::IsSeen, ValueKind::Any,
     "`then` when the condition is true, `else` when it is false, and only the chosen one is evaluated; missing when "
     "the condition is missing or the chosen one is missing or left out, undefined when the condition is no truth "
     "value.",
     nullptr, MakeIf, "", 1}};

}  // namespace

std::span<const BuiltInFunction> ConditionalFunctions() {
    return functions;
}

}  // namespace nbscore
