#include "framework/transform/functions/RegularExpressions.h"

#include <memory>
#include <string>
#include <utility>

#include "framework/transform/ApplyExpression.h"
#include "framework/transform/ValueReading.h"
#include "framework/transform/functions/ConstantArgument.h"
#include "framework/transform/functions/RegularExpression.h"

namespace nbscore {
namespace {

enum Argument { Input, Pattern, NewText };

ExpressionValue MatchesPattern(Arguments arguments, const RegularExpression& expression) {
    const auto matches = expression.Matches(TextOf(arguments[Input]));
    return matches ? ExpressionValue(*matches) : ExpressionValue();
}

ExpressionValue Matches(Arguments arguments) {
    const RegularExpression expression(TextOf(arguments[Pattern]));
    return expression.IsUsable() ? MatchesPattern(arguments, expression) : ExpressionValue();
}

ExpressionValue ReplacePattern(Arguments arguments, const RegularExpression& expression) {
    const Replacement replacement(TextOf(arguments[NewText]));
    if (!expression.HasGroup(replacement.GreatestGroup())) return {};
    auto replaced = expression.ReplacedAll(TextOf(arguments[Input]), replacement);
    return replaced ? BoundedText(std::move(*replaced)) : ExpressionValue();
}

ExpressionValue Replace(Arguments arguments) {
    const RegularExpression expression(TextOf(arguments[Pattern]));
    return expression.IsUsable() ? ReplacePattern(arguments, expression) : ExpressionValue();
}

/// The pattern of a call, compiled ahead when it is a constant, else null. A constant that is no pattern is refused.
std::shared_ptr<const RegularExpression> PatternAhead(const CallParts& parts) {
    const auto pattern = ConstantText(*parts.arguments[Pattern]);
    if (!pattern) return nullptr;
    auto expression = std::make_shared<const RegularExpression>(*pattern);
    if (!expression->IsUsable()) throw ArgumentRefusal(parts, "pattern", *pattern, expression->Fault());
    return expression;
}

using CallWithPattern = ExpressionValue(Arguments, const RegularExpression&);

std::unique_ptr<const Expression> MakeWithPattern(CallParts parts, std::shared_ptr<const RegularExpression> pattern,
                                                  CallWithPattern& callWithPattern) {
    ApplyExpression::Call call = parts.function.call;
    if (pattern) {
        call = [pattern = std::move(pattern), &callWithPattern](Arguments arguments) {
            return callWithPattern(arguments, *pattern);
        };
    }
    return std::make_unique<ApplyExpression>(std::move(parts), std::move(call));
}

std::unique_ptr<const Expression> MakeMatches(CallParts parts) {
    auto pattern = PatternAhead(parts);
    return MakeWithPattern(std::move(parts), std::move(pattern), MatchesPattern);
}

std::unique_ptr<const Expression> MakeReplace(CallParts parts) {
    auto pattern = PatternAhead(parts);
    const auto newText = ConstantText(*parts.arguments[NewText]);
    if (pattern && newText && !pattern->HasGroup(Replacement(*newText).GreatestGroup())) {
        throw ArgumentRefusal(parts, "replacement", *newText, "the pattern has no group of that number");
    }
    return MakeWithPattern(std::move(parts), std::move(pattern), ReplacePattern);
}

constexpr BuiltInFunction functions[] = {
    {"replace", "text, pattern, replacement", 3, 3, MissingRule::GivesMissing,
     "The text with every match of the regular expression replaced, where `$1` to `$9` or `\\1` to `\\9` in the "
     "replacement stand for what a group matched and `$0` or `\\0` for the whole match; undefined for a pattern that "
     "cannot be used and for a group that the pattern does not have.",
     Replace, MakeReplace},
    {"matches", "text, pattern", 2, 2, MissingRule::GivesMissing,
     "Whether the regular expression matches anywhere in the text; undefined for a pattern that cannot be used.",
     Matches, MakeMatches}};

}  // namespace

std::span<const BuiltInFunction> RegularExpressionFunctions() {
    return functions;
}

}  // namespace nbscore
