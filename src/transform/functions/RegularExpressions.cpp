#include "transform/functions/RegularExpressions.h"

#include <memory>
#include <string>
#include <utility>

#include "transform/evaluation/ValueReading.h"
#include "transform/functions/ApplyExpression.h"
#include "transform/functions/ConstantArgument.h"
#include "transform/functions/RegularExpression.h"

namespace nbscore {
namespace {

enum Argument { Input, Pattern, NewText };

using CallWithPattern = ExpressionValue(Arguments, const RegularExpression&, WorkBudget&);

ExpressionValue Matches(Arguments arguments, const RegularExpression& expression, WorkBudget& budget) {
    const auto matches = expression.Matches(TextOf(arguments[Input]), budget);
    return matches ? ExpressionValue(*matches) : ExpressionValue();
}

ExpressionValue Replace(Arguments arguments, const RegularExpression& expression, WorkBudget& budget) {
    const Replacement replacement(TextOf(arguments[NewText]));
    if (!expression.HasGroup(replacement.GreatestGroup())) return {};
    auto replaced = expression.ReplacedAll(TextOf(arguments[Input]), replacement, budget);
    return replaced ? BoundedText(std::move(*replaced)) : ExpressionValue();
}

/// With a pattern that is known case by case.
template <CallWithPattern& callWithPattern>
ExpressionValue CompileAndCall(Arguments arguments, WorkBudget& budget) {
    const std::string pattern = TextOf(arguments[Pattern]);
    if (!budget.Spend(RegularExpression::CompilationCost(pattern))) return {};
    const RegularExpression expression(pattern, RegularExpression::memoryForOnce);
    return expression.IsUsable() ? callWithPattern(arguments, expression, budget) : ExpressionValue();
}

/// The pattern of a call, compiled ahead when it is a constant, else null. A constant that is no pattern is refused.
std::shared_ptr<const RegularExpression> PatternAhead(const CallParts& parts) {
    const auto pattern = ConstantText(*parts.arguments[Pattern]);
    if (!pattern) return nullptr;
    auto expression = parts.patterns.Compile(*pattern, parts.elements[Pattern]);
    if (!expression->IsUsable()) throw ArgumentRefusal(parts, Pattern, "pattern", *pattern, expression->Fault());
    return expression;
}

template <CallWithPattern& callWithPattern>
std::unique_ptr<const Expression> MakeWithPattern(CallParts parts, std::shared_ptr<const RegularExpression> pattern) {
    if (!pattern) return std::make_unique<ApplyExpression>(std::move(parts));
    return std::make_unique<ApplyExpression>(std::move(parts),
                                             [pattern = std::move(pattern)](Arguments arguments, WorkBudget& budget) {
                                                 return callWithPattern(arguments, *pattern, budget);
                                             });
}

std::unique_ptr<const Expression> MakeMatches(CallParts parts) {
    auto pattern = PatternAhead(parts);
    return MakeWithPattern<Matches>(std::move(parts), std::move(pattern));
}

std::unique_ptr<const Expression> MakeReplace(CallParts parts) {
    auto pattern = PatternAhead(parts);
    const auto newText = ConstantText(*parts.arguments[NewText]);
    if (pattern && newText && !pattern->HasGroup(Replacement(*newText).GreatestGroup())) {
        throw ArgumentRefusal(parts, NewText, "replacement", *newText, "the pattern has no group of that number");
    }
    return MakeWithPattern<Replace>(std::move(parts), std::move(pattern));
}

constexpr BuiltInFunction functions[] = {
    {"replace", "text, pattern, replacement", 3, 3, MissingRule::GivesMissing, ValueKind::Text,
     "The text with every match of the regular expression replaced, where `$1` to `$9` or `\\1` to `\\9` in the "
     "replacement stand for what a group matched and `$0` or `\\0` for the whole match; undefined for a pattern that "
     "cannot be used and for a group that the pattern does not have.",
     nullptr, MakeReplace, "", BuiltInFunction::anyNumber, CompileAndCall<Replace>},
    {"matches", "text, pattern", 2, 2, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the regular expression matches anywhere in the text; undefined for a pattern that cannot be used.",
     nullptr, MakeMatches, "", BuiltInFunction::anyNumber, CompileAndCall<Matches>}};

}  // namespace

std::span<const BuiltInFunction> RegularExpressionFunctions() {
    return functions;
}

}  // namespace nbscore
