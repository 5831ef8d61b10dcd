#include "transform/functions/Comparison.h"

#include <compare>
#include <string_view>

#include "transform/evaluation/ValueReading.h"

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

constexpr BuiltInFunction functions[] = {ComparisonRow<Equal>("equal", "Whether x = y."),
                                         ComparisonRow<NotEqual>("notEqual", "Whether x ≠ y: the opposite of `equal`."),
                                         ComparisonRow<Less>("lessThan", "Whether x < y."),
                                         ComparisonRow<LessOrEqual>("lessOrEqual", "Whether x ≤ y."),
                                         ComparisonRow<Greater>("greaterThan", "Whether x > y."),
                                         ComparisonRow<GreaterOrEqual>("greaterOrEqual", "Whether x ≥ y.")};

}  // namespace

std::span<const BuiltInFunction> ComparisonFunctions() {
    return functions;
}

}  // namespace nbscore
