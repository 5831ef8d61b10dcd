#include "transform/functions/Membership.h"

#include <algorithm>

#include "transform/evaluation/ValueReading.h"

namespace nbscore {
namespace {

bool IsAmongTheOthers(Arguments arguments) {
    return std::ranges::any_of(arguments.subspan(1),
                               [&](const ExpressionValue& other) { return AreEqual(arguments[0], other); });
}

ExpressionValue IsIn(Arguments arguments) {
    return IsAmongTheOthers(arguments);
}

ExpressionValue IsNotIn(Arguments arguments) {
    return !IsAmongTheOthers(arguments);
}

constexpr BuiltInFunction functions[] = {
    {"isIn", "value, other, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the value is equal to one of the others.", IsIn},
    {"isNotIn", "value, other, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the value is equal to none of the others.", IsNotIn}};

}  // namespace

std::span<const BuiltInFunction> MembershipFunctions() {
    return functions;
}

}  // namespace nbscore
