#include "transform/functions/Families.h"

#include <algorithm>
#include <compare>
#include <memory>
#include <string_view>
#include <utility>

#include "transform/functions/FunctionCalls.h"

namespace nbscore {
namespace {

template <bool (&isFulfilled)(std::partial_ordering)>
ExpressionValue Comparing(Arguments arguments) {
    return isFulfilled(CompareValues(arguments[0], arguments[1]));
}

bool Equal(std::partial_ordering order) {
    return std::is_eq(order);
}

bool NotEqual(std::partial_ordering order) {
    return std::is_neq(order);
}

bool Less(std::partial_ordering order) {
    return std::is_lt(order);
}

bool LessOrEqual(std::partial_ordering order) {
    return std::is_lteq(order);
}

bool Greater(std::partial_ordering order) {
    return std::is_gt(order);
}

bool GreaterOrEqual(std::partial_ordering order) {
    return std::is_gteq(order);
}

template <bool (&isFulfilled)(std::partial_ordering)>
constexpr BuiltInFunction ComparisonRow(std::string_view name, std::string_view description) {
    return {name, "x, y", 2, 2, MissingRule::GivesMissing, ValueKind::Truth, description, Comparing<isFulfilled>};
}

constexpr BuiltInFunction comparisonFunctions[] = {
    ComparisonRow<Equal>("equal", "Whether x = y."),
    ComparisonRow<NotEqual>("notEqual", "Whether x ≠ y: the opposite of `equal`."),
    ComparisonRow<Less>("lessThan", "Whether x < y."),
    ComparisonRow<LessOrEqual>("lessOrEqual", "Whether x ≤ y."),
    ComparisonRow<Greater>("greaterThan", "Whether x > y."),
    ComparisonRow<GreaterOrEqual>("greaterOrEqual", "Whether x ≥ y.")};

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

constexpr BuiltInFunction membershipFunctions[] = {
    {"isIn", "value, other, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the value is equal to one of the others.", IsIn},
    {"isNotIn", "value, other, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the value is equal to none of the others.", IsNotIn}};

/// `decisive` when an argument is; else missing when one is unknown; else the opposite.
ExpressionValue ThreeValued(Arguments arguments, bool decisive) {
    bool isKnown = true;
    for (const ExpressionValue& argument : arguments) {
        const auto truth = TruthOf(argument);
        if (truth == decisive) return decisive;
        isKnown = isKnown && truth;
    }
    return isKnown ? ExpressionValue(!decisive) : ExpressionValue();
}

ExpressionValue And(Arguments arguments) {
    return ThreeValued(arguments, false);
}

ExpressionValue Or(Arguments arguments) {
    return ThreeValued(arguments, true);
}

ExpressionValue Not(Arguments arguments) {
    const auto truth = TruthOf(arguments[0]);
    return truth ? ExpressionValue(!*truth) : ExpressionValue();
}

constexpr BuiltInFunction logicFunctions[] = {
    {"and", "x, y, ...", 2, BuiltInFunction::anyNumber, MissingRule::IsSeen, ValueKind::Truth,
     "False when an argument is false, else missing when one is missing or no truth value, else true.", And},
    {"or", "x, y, ...", 2, BuiltInFunction::anyNumber, MissingRule::IsSeen, ValueKind::Truth,
     "True when an argument is true, else missing when one is missing or no truth value, else false.", Or},
    {"not", "x", 1, 1, MissingRule::GivesMissing, ValueKind::Truth,
     "The opposite truth value; undefined when x is no truth value.", Not}};

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

constexpr BuiltInFunction missingValueFunctions[] = {
    {"isMissing", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether the value is missing; never missing itself.", AskMissing},
    {"isNotMissing", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether the value is not missing; never missing itself.", AskNotMissing},
    {"isValid", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "Whether there is a value, not NaN, and, for a `FieldRef`, one that the field's declaration allows: a number in a "
     "numeric field, a truth value in a boolean one, none of the declared invalid values, one of the declared valid "
     "values if there are any, and inside one of the declared intervals if there are any; never missing itself.",
     nullptr, MakeIsValid},
    {"isNotValid", "value", 1, 1, MissingRule::IsSeen, ValueKind::Truth,
     "The opposite of `isValid`, so true for a missing value; never missing itself.", nullptr, MakeIsNotValid}};

std::unique_ptr<const Expression> MakeIf(CallParts parts) {
    return std::make_unique<ConditionalExpression>(std::move(parts));
}

constexpr BuiltInFunction conditionalFunctions[] = {
    {"if", "condition, then[, else]", 2, 3, MissingRule::IsSeen, ValueKind::Any,
     "`then` when the condition is true, `else` when it is false, and only the chosen one is evaluated; missing when "
     "the condition is missing or the chosen one is missing or left out, undefined when the condition is no truth "
     "value.",
     nullptr, MakeIf, "", 1}};

}  // namespace

std::span<const BuiltInFunction> ComparisonFunctions() {
    return comparisonFunctions;
}

std::span<const BuiltInFunction> MembershipFunctions() {
    return membershipFunctions;
}

std::span<const BuiltInFunction> LogicFunctions() {
    return logicFunctions;
}

std::span<const BuiltInFunction> MissingValueFunctions() {
    return missingValueFunctions;
}

std::span<const BuiltInFunction> ConditionalFunctions() {
    return conditionalFunctions;
}

}  // namespace nbscore
