#include "transform/functions/Families.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "transform/functions/FunctionCalls.h"
#include "transform/functions/IsoDateTime.h"
#include "transform/functions/NumberPattern.h"

namespace nbscore {
namespace {

enum Argument { Input, Pattern };

ExpressionValue FormatByPattern(const ExpressionValue& input, const NumberPattern& pattern) {
    const auto number = NumberOf(input);
    auto text = number ? pattern.Format(*number) : std::nullopt;
    return text ? BoundedText(std::move(*text)) : ExpressionValue();
}

ExpressionValue FormatNumberByPattern(Arguments arguments) {
    std::string fault;
    const auto pattern = NumberPattern::Read(TextOf(arguments[Pattern]), fault);
    return pattern ? FormatByPattern(arguments[Input], *pattern) : ExpressionValue();
}

ExpressionValue FormatDateTimeByPattern(Arguments arguments) {
    const auto dateTime = ReadIsoDateTime(TextOf(arguments[Input]));
    auto text = dateTime ? FormatDateTime(*dateTime, TextOf(arguments[Pattern])) : std::nullopt;
    return text ? ExpressionValue(std::move(*text)) : ExpressionValue();
}

std::unique_ptr<const Expression> MakeFormatNumber(CallParts parts) {
    const auto text = ConstantText(*parts.arguments[Pattern]);
    if (!text) return std::make_unique<ApplyExpression>(std::move(parts));
    std::string fault;
    auto pattern = NumberPattern::Read(*text, fault);
    if (!pattern) throw ArgumentRefusal(Refusal::PatternUnusable, parts, Pattern, *text, fault);
    return std::make_unique<ApplyExpression>(std::move(parts),
                                             [pattern = std::move(*pattern)](Arguments arguments, WorkBudget&) {
                                                 return FormatByPattern(arguments[Input], pattern);
                                             });
}

std::unique_ptr<const Expression> MakeFormatDateTime(CallParts parts) {
    if (const auto pattern = ConstantText(*parts.arguments[Pattern])) {
        const std::string fault = FaultOfDateTimePattern(*pattern);
        if (!fault.empty()) throw ArgumentRefusal(Refusal::PatternUnusable, parts, Pattern, *pattern, fault);
    }
    return std::make_unique<ApplyExpression>(std::move(parts));
}

constexpr BuiltInFunction formattingFunctions[] = {
    {"formatNumber", "number, pattern", 2, 2, MissingRule::GivesMissing, ValueKind::Text,
     "The number formatted by a pattern of C's `printf` with exactly one conversion, one of `%d %i %u %o %x %X` (of "
     "the number "
     "rounded, a half to the even one), `%f %F %e %E %g %G`, or `%s` for the shortest digits; flags are `-`, `+`, "
     "blank and `0`, width and precision go up to 1000; undefined for any other pattern and, without sign, for a "
     "negative number or one from 2^64 on in `%o %x %X`.",
     FormatNumberByPattern, MakeFormatNumber},
    {"formatDatetime", "date, pattern", 2, 2, MissingRule::GivesMissing, ValueKind::Text,
     "The date, the time, or both, not converted to UTC, formatted by a pattern of POSIX `strftime` in the "
     "POSIX locale (every conversion but `%Z` and those with `E` or `O`; `%z` is empty without an offset, a date alone "
     "is its midnight); undefined for any other pattern, for what is no date or time, and for a time alone where the "
     "pattern needs a date.",
     FormatDateTimeByPattern, MakeFormatDateTime}};

}  // namespace

std::span<const BuiltInFunction> FormattingFunctions() {
    return formattingFunctions;
}

}  // namespace nbscore
