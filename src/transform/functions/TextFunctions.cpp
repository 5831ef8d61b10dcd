#include "transform/functions/Families.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "framework/Blanks.h"
#include "transform/functions/CodePoints.h"
#include "transform/functions/FunctionCalls.h"
#include "transform/functions/RegularExpression.h"

namespace nbscore {
namespace {

ExpressionValue UpperCase(Arguments arguments) {
    return BoundedText(UpperCaseOf(TextOf(arguments[0])));
}

ExpressionValue LowerCase(Arguments arguments) {
    return BoundedText(LowerCaseOf(TextOf(arguments[0])));
}

/// The argument as a whole number; nothing when it is none, or below the least one allowed.
std::optional<double> WholeNumber(const ExpressionValue& argument, double least) {
    const auto number = NumberOf(argument);
    const bool isFine = number && std::isfinite(*number) && std::trunc(*number) == *number && *number >= least;
    return isFine ? number : std::nullopt;
}

ExpressionValue Substring(Arguments arguments) {
    const auto start = WholeNumber(arguments[1], 1.0);
    const auto length = WholeNumber(arguments[2], 0.0);
    if (!start || !length) return {};
    const std::string text = TextOf(arguments[0]);
    return BoundedText(std::string(FirstCharacters(WithoutCharacters(text, *start - 1.0), *length)));
}

ExpressionValue TrimBlanks(Arguments arguments) {
    return BoundedText(std::string(WithoutBlanks(TextOf(arguments[0]))));
}

ExpressionValue Concatenate(Arguments arguments) {
    std::string whole;
    for (const ExpressionValue& argument : arguments) {
        whole += TextOf(argument);
        if (whole.size() > longestText) return {};
    }
    return whole;
}

ExpressionValue StringLength(Arguments arguments) {
    return static_cast<double>(CountCharacters(TextOf(arguments[0])));
}

constexpr BuiltInFunction stringFunctions[] = {
    {"uppercase", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text in upper case, character by character by Unicode's simple mapping, whatever the language: ß stays ß.",
     UpperCase},
    {"lowercase", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text in lower case, character by character by Unicode's simple mapping, whatever the language.", LowerCase},
    {"substring", "text, start, length", 3, 3, MissingRule::GivesMissing, ValueKind::Text,
     "As many characters as the length says, from the start on, where 1 is the first, or as many as there are; "
     "undefined "
     "unless the start is a whole number from 1 on and the length one from 0 on.",
     Substring},
    {"trimBlanks", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text without the spaces, tabs and line ends at its beginning and its end.", TrimBlanks},
    {"concat", "text, text, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Text,
     "The texts joined in order.", Concatenate},
    {"stringLength", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Number,
     "How many characters (Unicode code points) the text has.", StringLength}};

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

/// For a pattern that is not the same for every case.
template <CallWithPattern& callWithPattern>
ExpressionValue CompileAndCall(Arguments arguments, WorkBudget& budget) {
    const std::string pattern = TextOf(arguments[Pattern]);
    if (!budget.Spend(RegularExpression::CompilationCost(pattern))) return {};
    const RegularExpression expression(pattern, RegularExpression::memoryForOnce);
    return expression.IsUsable() ? callWithPattern(arguments, expression, budget) : ExpressionValue();
}

/// The compiled pattern of a call when it is a constant, else null. A constant that cannot be used is refused.
std::shared_ptr<const RegularExpression> PatternAhead(const CallParts& parts) {
    const auto pattern = ConstantText(*parts.arguments[Pattern]);
    if (!pattern) return nullptr;
    auto expression = parts.patterns.Compile(*pattern, parts.elements[Pattern]);
    if (!expression->IsUsable())
        throw ArgumentRefusal(Refusal::PatternUnusable, parts, Pattern, *pattern, expression->Fault());
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
        throw ArgumentRefusal(Refusal::ReplacementUnusable, parts, NewText, *newText,
                              "the pattern has no group of that number");
    }
    return MakeWithPattern<Replace>(std::move(parts), std::move(pattern));
}

constexpr BuiltInFunction regularExpressionFunctions[] = {
    {"replace", "text, pattern, replacement", 3, 3, MissingRule::GivesMissing, ValueKind::Text,
     "The text with every match of the regular expression replaced, where `$1` to `$9` or `\\1` to `\\9` in the "
     "replacement stand for what a group matched and `$0` or `\\0` for the whole match; undefined for a pattern that "
     "cannot be used and for a group that the pattern does not have.",
     nullptr, MakeReplace, "", BuiltInFunction::anyNumber, CompileAndCall<Replace>},
    {"matches", "text, pattern", 2, 2, MissingRule::GivesMissing, ValueKind::Truth,
     "Whether the regular expression matches anywhere in the text; undefined for a pattern that cannot be used.",
     nullptr, MakeMatches, "", BuiltInFunction::anyNumber, CompileAndCall<Matches>}};

}  // namespace

std::span<const BuiltInFunction> StringFunctions() {
    return stringFunctions;
}

std::span<const BuiltInFunction> RegularExpressionFunctions() {
    return regularExpressionFunctions;
}

}  // namespace nbscore
