#include "transform/functions/Logic.h"

#include "transform/evaluation/ValueReading.h"

namespace nbscore {
namespace {

/// `decisive` as soon as one argument is it, else missing when one is unknown, else the opposite.
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

constexpr BuiltInFunction functions[] = {
    {"and", "x, y, ...", 2, BuiltInFunction::anyNumber, MissingRule::IsSeen, ValueKind::Truth,
     "False when an argument is false, else missing when one is missing or no truth value, else true.", And},
    {"or", "x, y, ...", 2, BuiltInFunction::anyNumber, MissingRule::IsSeen, ValueKind::Truth,
     "True when an argument is true, else missing when one is missing or no truth value, else false.", Or},
    {"not", "x", 1, 1, MissingRule::GivesMissing, ValueKind::Truth,
     "The opposite truth value; undefined when x is no truth value.", Not}};

}  // namespace

std::span<const BuiltInFunction> LogicFunctions() {
    return functions;
}

}  // namespace nbscore
