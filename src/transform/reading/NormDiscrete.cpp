#include "transform/reading/ExpressionReader.h"

#include <memory>
#include <utility>

#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/FieldInput.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

/// `NormDiscrete`: 1 when a field has a certain value, else 0.
class NormDiscreteExpression : public Expression {
public:
    NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    ExpressionValue soughtValue;
};

void RefuseOtherMethods(Element element) {
    const auto method = element.GetAttribute(Name::method);
    if (!method || method == "indicator") return;
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "The method \"" + ExcerptOf(*method) + "\" of <NormDiscrete> is not supported.");
}

NormDiscreteExpression::NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind)
    : input(std::move(readField)), soughtValue(std::move(valueToFind)) {}

ExpressionValue NormDiscreteExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue value = fields.Get(input.field);
    if (IsMissing(value)) return CopyOf(input.resultWhenMissing);
    return AreEqual(value, soughtValue) ? 1.0 : 0.0;
}

}  // namespace

std::unique_ptr<const Expression> ReadNormDiscrete(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    FieldInput input = ReadFieldInput(element, field, ValueKind::Number, scope.GetTranscoder());
    RequiredAttribute(element, Name::value);
    RefuseOtherMethods(element);
    const auto children = ChildrenOf(element);
    if (!children.empty()) throw UnexpectedChild(children.front(), element.GetTag());
    ExpressionValue sought = AttributeOfKind(element, Name::value, field.kind, scope.GetTranscoder());
    return std::make_unique<NormDiscreteExpression>(std::move(input), std::move(sought));
}

}  // namespace nbscore
