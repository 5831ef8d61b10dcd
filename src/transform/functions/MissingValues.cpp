#include "transform/functions/MissingValues.h"

#include <memory>
#include <utility>

#include "transform/functions/ValidityExpression.h"

namespace nbscore {
namespace {

ExpressionValue AskMissing(Arguments arguments) {
    return IsMissing(arguments[0]);
}

ExpressionValue AskNotMissing(Arguments arguments) {
    return !IsMissing(arguments[0]);
}

std::unique_ptr<const Expression> MakeIsValid(CallParts parts) {
    return std::make_unique<ValidityExpression>(std::move(parts), true);
}

std::unique_ptr<const Expression> MakeIsNotValid(CallParts parts) {
    return std::make_unique<ValidityExpression>(std::move(parts), false);
}

constexpr BuiltInFunction functions[] = {
    {"isMissing", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether the value is missing; never missing itself.", AskMissing},
    {"isNotMissing", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether the value is not missing; never missing itself.", AskNotMissing},
    {"isValid", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether there is a value, no NaN, and, for a `FieldRef`, the field's declaration allows it: a number in a "
     "numeric "
     "field, a truth value in a boolean one, none of the field's invalid values, one of its valid values and inside "
     "one "
     "of its intervals where it declares any; never missing itself.",
     nullptr, MakeIsValid},
    {"isNotValid", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "The opposite of `isValid`, so true for a missing value; never missing itself.", nullptr, MakeIsNotValid}};

}  // namespace

std::span<const BuiltInFunction> MissingValueFunctions() {
    return functions;
}

}  // namespace nbscore
