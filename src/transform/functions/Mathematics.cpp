#include "transform/functions/Families.h"

#include <cmath>

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

// All doubles here are IEEE numbers, for which division by zero is defined.
double Divide(double x, double y) {
    return x / y;
}

constexpr BuiltInFunction arithmeticFunctions[] = {
    TwoNumbersRow<Add>("+", "x, y", "The sum x + y."),
    {"-", "x[, y]", 1, 2, MissingRule::GivesMissing, ValueKind::Number, "The difference x - y; with one argument, -x.",
     SubtractOrNegate},
    TwoNumbersRow<Multiply>("*", "x, y", "The product x · y."),
    TwoNumbersRow<Divide>("/", "x, y",
                          "The quotient x / y, of whole numbers too (7 / 2 is 3.5); undefined when y is 0.")};

double Log10(double x) {
    return std::log10(x);
}

double NaturalLogarithm(double x) {
    return std::log(x);
}

double SquareRoot(double x) {
    return std::sqrt(x);
}

double AbsoluteValue(double x) {
    return std::abs(x);
}

double Exponential(double x) {
    return std::exp(x);
}

double Power(double base, double exponent) {
    return std::pow(base, exponent);
}

double Threshold(double x, double y) {
    return x > y ? 1.0 : 0.0;
}

double Floor(double x) {
    return std::floor(x);
}

double Ceiling(double x) {
    return std::ceil(x);
}

// By exactly this formula, so that the bits are the same everywhere; the sum is rounded as doubles are.
double RoundHalfUp(double x) {
    return std::floor(x + 0.5);
}

// The rounding mode is never changed: to the nearest, a half to the even one.
double RoundHalfToEven(double x) {
    return std::nearbyint(x);
}

// By exactly this formula too: fmod has the sign of x.
double Modulo(double x, double y) {
    return x - std::floor(x / y) * y;
}

double ExponentialMinusOne(double x) {
    return std::expm1(x);
}

double LogarithmOfOnePlus(double x) {
    return std::log1p(x);
}

double Hypotenuse(double x, double y) {
    return std::hypot(x, y);
}

constexpr BuiltInFunction generalMathFunctions[] = {
    OneNumberRow<Log10>("log10", "The logarithm to base 10; undefined unless x > 0."),
    OneNumberRow<NaturalLogarithm>("ln", "The natural logarithm; undefined unless x > 0."),
    OneNumberRow<SquareRoot>("sqrt", "The square root; undefined when x < 0."),
    OneNumberRow<AbsoluteValue>("abs", "The absolute value."),
    OneNumberRow<Exponential>("exp", "e to the power x; undefined when that is too large for a double."),
    TwoNumbersRow<Power>("pow", "base, exponent",
                         "The base to the power of the exponent, 1 whenever the exponent is 0; undefined for a "
                         "negative base with an exponent that is not whole, and for 0 with a negative exponent."),
    TwoNumbersRow<Threshold>("threshold", "x, y", "1 when x > y, else 0."),
    OneNumberRow<Floor>("floor", "The greatest whole number that is not above x."),
    OneNumberRow<Ceiling>("ceil", "The least whole number that is not below x."),
    OneNumberRow<RoundHalfUp>("round",
                              "The whole number floor(x + 0.5), in doubles: 2.5 becomes 3 and -2.5 becomes -2."),
    OneNumberRow<RoundHalfToEven>(
        "rint", "The whole number nearest to x, a half to the even one: 2.5 becomes 2 and 3.5 becomes 4."),
    TwoNumbersRow<Modulo>("modulo", "x, y",
                          "The remainder x - floor(x / y) · y, in doubles, which has the sign of the divisor y: "
                          "modulo(-7, 3) is 2; undefined when y is 0."),
    OneNumberRow<ExponentialMinusOne>(
        "expm1",
        "e to the power x, minus 1, accurate for x near 0 too; undefined when that is too large for a double."),
    OneNumberRow<LogarithmOfOnePlus>(
        "ln1p", "The natural logarithm of 1 + x, accurate for x near 0 too; undefined unless x > -1."),
    TwoNumbersRow<Hypotenuse>("hypot", "x, y", "The square root of x² + y², without intermediate overflow.")};

double Sine(double x) {
    return std::sin(x);
}

double ArcSine(double x) {
    return std::asin(x);
}

double HyperbolicSine(double x) {
    return std::sinh(x);
}

double Cosine(double x) {
    return std::cos(x);
}

double ArcCosine(double x) {
    return std::acos(x);
}

double HyperbolicCosine(double x) {
    return std::cosh(x);
}

double Tangent(double x) {
    return std::tan(x);
}

double ArcTangent(double x) {
    return std::atan(x);
}

double HyperbolicTangent(double x) {
    return std::tanh(x);
}

constexpr BuiltInFunction trigonometricFunctions[] = {
    OneNumberRow<Sine>("sin", "The sine of an angle in radians."),
    OneNumberRow<ArcSine>("asin", "The angle from -π/2 to π/2 whose sine is x; undefined unless -1 ≤ x ≤ 1."),
    OneNumberRow<HyperbolicSine>("sinh", "The hyperbolic sine; undefined when that is too large for a double."),
    OneNumberRow<Cosine>("cos", "The cosine of an angle in radians."),
    OneNumberRow<ArcCosine>("acos", "The angle from 0 to π whose cosine is x; undefined unless -1 ≤ x ≤ 1."),
    OneNumberRow<HyperbolicCosine>("cosh", "The hyperbolic cosine; undefined when that is too large for a double."),
    OneNumberRow<Tangent>("tan", "The tangent of an angle in radians."),
    OneNumberRow<ArcTangent>("atan", "The angle from -π/2 to π/2 whose tangent is x."),
    OneNumberRow<HyperbolicTangent>("tanh", "The hyperbolic tangent.")};

}  // namespace

std::span<const BuiltInFunction> ArithmeticFunctions() {
    return arithmeticFunctions;
}

std::span<const BuiltInFunction> GeneralMathFunctions() {
    return generalMathFunctions;
}

std::span<const BuiltInFunction> TrigonometricFunctions() {
    return trigonometricFunctions;
}

}  // namespace nbscore
