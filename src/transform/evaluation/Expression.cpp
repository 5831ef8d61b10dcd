#include "transform/evaluation/Expression.h"

#include <cmath>

namespace nbscore {

ExpressionValue ConstantExpression::ValueFor(const FieldValues&) const {
    return CopyOf(value);
}

std::optional<double> FieldInput::NumberIn(const FieldValues& fields) const {
    const std::optional<double> number = NumberOf(fields.Get(field));
    return number && !std::isnan(*number) ? number : std::nullopt;
}

ExpressionValue FieldRefExpression::ValueFor(const FieldValues& fields) const {
    ExpressionValue value = fields.Get(input.field);
    if (IsMissing(value)) return input.ResultWhenMissing();
    return value;
}

bool FieldRefExpression::IsValid(const ExpressionValue& /*value*/, const FieldValues& fields) const {
    if (fields.IsValid(input.field)) return true;
    return IsValidByItself(input.ResultWhenMissing()) && IsMissing(fields.Get(input.field));
}

}  // namespace nbscore

FunctionTreeImp::FunctionTreeImp(bool givesNumbers) : numeric(givesNumbers) {}

FunctionTreeImp::~FunctionTreeImp() = default;
FunctionTreeImp::FunctionTreeImp(FunctionTreeImp&&) noexcept = default;
FunctionTreeImp& FunctionTreeImp::operator=(FunctionTreeImp&&) noexcept = default;

void FunctionTreeImp::SetExpression(std::unique_ptr<const nbscore::Expression> compiled) {
    expression = std::move(compiled);
}

nbscore::ExpressionValue FunctionTreeImp::Evaluate(const nbscore::FieldValues& fields) const {
    if (!expression) return {};
    return CastTo(numeric ? nbscore::ValueKind::Number : nbscore::ValueKind::Text, expression->Evaluate(fields));
}
