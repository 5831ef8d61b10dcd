#include "transform/functions/Trigonometry.h"

#include <cmath>

#include "transform/functions/NumberFunctions.h"

namespace nbscore {
namespace {

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

constexpr BuiltInFunction functions[] = {
    OneNumberRow<Sine>("sin", "The sine of an angle in radians."),
    OneNumberRow<ArcSine>("asin", "The angle from -π/2 to π/2 whose sine is x; undefined unless -1 ≤ x ≤ 1."),
    OneNumberRow<HyperbolicSine>("sinh", "The hyperbolic sine; undefined when that is too great for a double."),
    OneNumberRow<Cosine>("cos", "The cosine of an angle in radians."),
    OneNumberRow<ArcCosine>("acos", "The angle from 0 to π whose cosine is x; undefined unless -1 ≤ x ≤ 1."),
    OneNumberRow<HyperbolicCosine>("cosh", "The hyperbolic cosine; undefined when that is too great for a double."),
    OneNumberRow<Tangent>("tan", "The tangent of an angle in radians."),
    OneNumberRow<ArcTangent>("atan", "The angle from -π/2 to π/2 whose tangent is x."),
    OneNumberRow<HyperbolicTangent>("tanh", "The hyperbolic tangent.")};

}  // namespace

std::span<const BuiltInFunction> TrigonometricFunctions() {
    return functions;
}

}  // namespace nbscore
