#include "transform/functions/Arithmetic.h"

#include "transform/functions/NumberFunctions.h"

namespace nbscore {
namespace {

double Add(double x, double y) {
    return x + y;
}

double Negate(double x) {
    return -x;
}

double Subtract(double x, double y) {
    return x - y;
}

ExpressionValue SubtractOrNegate(Arguments arguments) {
    return arguments.size() == 1 ? OfOneNumber<Negate>(arguments) : OfTwoNumbers<Subtract>(arguments);
}

double Multiply(double x, double y) {
    return x * y;
}

// Division by zero is an operation like any other to IEEE numbers, which is what all doubles here are.
double Divide(double x, double y) {
    return x / y;
}

constexpr BuiltInFunction functions[] = {
    TwoNumbersRow<Add>("+", "x, y", "The sum x + y."),
    {"-", "x[, y]", 1, 2, MissingRule::GivesMissing, ValueKind::Number, "The difference x - y; with one argument, -x.",
     SubtractOrNegate},
    TwoNumbersRow<Multiply>("*", "x, y", "The product x · y."),
    TwoNumbersRow<Divide>("/", "x, y",
                          "The quotient x / y, of whole numbers too (7 / 2 is 3.5); undefined when y is 0.")};

}  // namespace

std::span<const BuiltInFunction> ArithmeticFunctions() {
    return functions;
}

}  // namespace nbscore
