#include "transform/functions/FunctionCalls.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/ControlCharacters.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

enum Argument { Condition, Then, Else };

/// For messages that quote a document: short, and without control characters.
std::string Quotable(std::string_view text) {
    const std::string_view start = FirstCharacters(text, maxQuotedUnits);
    const std::string quotable = MaskControls(start);
    return start.size() < text.size() ? quotable + "..." : quotable;
}

}  // namespace

ExpressionValue ApplyOptions::ResultFor(ExpressionValue value) const {
    const auto* number = std::get_if<double>(&value);
    const bool isUndefined = number != nullptr && !std::isfinite(*number);
    const bool isMissing = IsMissing(value) || (isUndefined && undefined == UndefinedResult::IsMissing);
    if (!isMissing) return value;
    return defaultValue ? CopyOf(*defaultValue) : ExpressionValue();
}

ExpressionValue ApplyOptions::ResultForMissingArgument() const {
    return mapMissingTo ? CopyOf(*mapMissingTo) : ResultFor({});
}

ApplyExpression::ApplyExpression(CallParts parts, Call functionCall)
    : arguments(std::move(parts.arguments)),
      options(std::move(parts.options)),
      function(parts.function),
      preparedCall(functionCall ? std::make_unique<const Call>(std::move(functionCall)) : nullptr) {}

ExpressionValue ApplyExpression::ValueFor(const FieldValues& fields) const {
    WorkBudget& budget = fields.Budget();
    budget.NoteCall();
    std::vector<ExpressionValue> values;
    values.reserve(arguments.size());
    for (const auto& argument : arguments)
        values.push_back(argument->Evaluate(fields));

    if (std::ranges::none_of(values, IsMissing)) return options.ResultFor(CallWith(values, budget));
    if (options.mapMissingTo) return options.ResultForMissingArgument();
    switch (function.missingRule) {
        case MissingRule::GivesMissing:
            return options.ResultForMissingArgument();
        case MissingRule::IsLeftOut:
            return CallWithoutMissing(std::move(values), budget);
        case MissingRule::IsSeen:
            break;
    }
    return options.ResultFor(CallWith(values, budget));
}

ExpressionValue ApplyExpression::CallWith(Arguments values, WorkBudget& budget) const {
    if (preparedCall) return (*preparedCall)(values, budget);
    return function.callWithin != nullptr ? function.callWithin(values, budget) : function.call(values);
}

ExpressionValue ApplyExpression::CallWithoutMissing(std::vector<ExpressionValue> values, WorkBudget& budget) const {
    std::erase_if(values, IsMissing);
    return values.empty() ? options.ResultForMissingArgument() : options.ResultFor(CallWith(values, budget));
}

ConditionalExpression::ConditionalExpression(CallParts parts)
    : arguments(std::move(parts.arguments)), options(std::move(parts.options)) {}

// A condition that is no truth value makes the result undefined, that is missing. So does a false one without a third
// argument.
ExpressionValue ConditionalExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue condition = arguments[Condition]->Evaluate(fields);
    if (IsMissing(condition)) return options.ResultForMissingArgument();
    const auto truth = TruthOf(condition);
    if (!truth || (!*truth && arguments.size() <= Else)) return options.ResultFor({});
    ExpressionValue chosen = arguments[*truth ? Then : Else]->Evaluate(fields);
    return IsMissing(chosen) ? options.ResultForMissingArgument() : options.ResultFor(std::move(chosen));
}

ValidityExpression::ValidityExpression(CallParts parts, bool isPositive)
    : arguments(std::move(parts.arguments)), options(std::move(parts.options)), asksForValid(isPositive) {}

ExpressionValue ValidityExpression::ValueFor(const FieldValues& fields) const {
    const Expression& argument = *arguments.front();
    const ExpressionValue value = argument.Evaluate(fields);
    if (options.mapMissingTo && IsMissing(value)) return options.ResultForMissingArgument();
    return argument.IsValid(value, fields) == asksForValid;
}

std::optional<std::string> ConstantText(const Expression& argument) {
    const auto* constant = dynamic_cast<const ConstantExpression*>(&argument);
    if (constant == nullptr || IsMissing(constant->GetValue())) return std::nullopt;
    return TextOf(constant->GetValue());
}

VeskException ArgumentRefusal(Refusal id, const CallParts& parts, std::size_t argument, std::string_view text,
                              std::string_view reason) {
    return RefusalAt(parts.elements[argument], id, {Quotable(text), parts.function.name, Quotable(reason)});
}

}  // namespace nbscore
