#include "transform/evaluation/FieldRefExpression.h"

#include <utility>

namespace nbscore {

FieldRefExpression::FieldRefExpression(FieldInput readField) : input(std::move(readField)) {}

ExpressionValue FieldRefExpression::ValueFor(const FieldValues& fields) const {
    ExpressionValue value = fields.Get(input.field);
    if (IsMissing(value)) return CopyOf(input.resultWhenMissing);
    return value;
}

bool FieldRefExpression::IsValid(const ExpressionValue& /*value*/, const FieldValues& fields) const {
    if (fields.IsValid(input.field)) return true;
    return IsValidByItself(input.resultWhenMissing) && IsMissing(fields.Get(input.field));
}

std::unique_ptr<const Expression> ReadFieldRef(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    return std::make_unique<FieldRefExpression>(ReadFieldInput(element, field, field.kind, scope.GetTranscoder()));
}

}  // namespace nbscore
