#include "transform/functions/Families.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

namespace nbscore {
namespace {

using Numbers = std::vector<double>;

/// All arguments as numbers; nothing when one is no number.
std::optional<Numbers> NumbersOf(Arguments arguments) {
    Numbers numbers;
    numbers.reserve(arguments.size());
    for (const ExpressionValue& argument : arguments) {
        const auto number = NumberOf(argument);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    return numbers;
}

/// With a NaN among the numbers the result is NaN: it cannot be ordered, and its position must not matter.
template <double (&operation)(Numbers&)>
ExpressionValue OfNumbers(Arguments arguments) {
    auto numbers = NumbersOf(arguments);
    if (!numbers) return {};
    const bool hasNan = std::ranges::any_of(*numbers, [](double number) { return std::isnan(number); });
    return hasNan ? std::numeric_limits<double>::quiet_NaN() : operation(*numbers);
}

double Least(Numbers& numbers) {
    return std::ranges::min(numbers);
}

double Greatest(Numbers& numbers) {
    return std::ranges::max(numbers);
}

double Sum(Numbers& numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

double Average(Numbers& numbers) {
    return Sum(numbers) / static_cast<double>(numbers.size());
}

double Median(Numbers& numbers) {
    std::ranges::sort(numbers);
    const std::size_t middle = numbers.size() / 2;
    return numbers.size() % 2 == 1 ? numbers[middle] : std::midpoint(numbers[middle - 1], numbers[middle]);
}

double Product(Numbers& numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), 1.0, [](double x, double y) { return x * y; });
}

constexpr BuiltInFunction OfAnyNumber(std::string_view name, std::string_view description,
                                      ExpressionValue (*call)(Arguments)) {
    return {name,        "x, ...", 1, BuiltInFunction::anyNumber, MissingRule::IsLeftOut, ValueKind::Number,
            description, call};
}

constexpr BuiltInFunction aggregateFunctions[] = {
    OfAnyNumber("min", "The least of the numbers.", OfNumbers<Least>),
    OfAnyNumber("max", "The greatest of the numbers.", OfNumbers<Greatest>),
    OfAnyNumber("sum", "The sum of the numbers, from left to right.", OfNumbers<Sum>),
    OfAnyNumber("avg", "The sum of the numbers, from left to right, divided by their count.", OfNumbers<Average>),
    OfAnyNumber(
        "median",
        "The middle one of the numbers in ascending order; the mean of the middle two when their count is even.",
        OfNumbers<Median>),
    OfAnyNumber("product", "The product of the numbers, from left to right.", OfNumbers<Product>)};

}  // namespace

std::span<const BuiltInFunction> AggregateFunctions() {
    return aggregateFunctions;
}

}  // namespace nbscore
