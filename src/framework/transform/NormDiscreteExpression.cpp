#include "framework/transform/NormDiscreteExpression.h"

#include <xercesc/dom/DOMElement.hpp>

#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ValueReading.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

constexpr XmlName valueName = "value";

void RefuseOtherMethods(const xercesc::DOMElement* element) {
    constexpr XmlName methodName = "method";
    const XMLCh* method = BaseTranslator::GetAttribute(element, methodName);
    if (!method || BaseTranslator::IsEqual(method, "indicator")) return;
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "The method \"" + ExcerptOf(method) + "\" of <NormDiscrete> is not supported.");
}

}  // namespace

NormDiscreteExpression::NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind)
    : input(std::move(readField)), soughtValue(std::move(valueToFind)) {}

ExpressionValue NormDiscreteExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue value = fields.Get(input.field);
    if (IsMissing(value)) return CopyOf(input.resultWhenMissing);
    return AreEqual(value, soughtValue) ? 1.0 : 0.0;
}

std::unique_ptr<const Expression> ReadNormDiscrete(const xercesc::DOMElement* element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    FieldInput input = ReadFieldInput(element, field, ValueKind::Number, scope.GetTranscoder());
    BaseTranslator::GetAttributeForced(element, valueName);
    RefuseOtherMethods(element);
    const auto children = ChildrenOf(element);
    if (!children.empty()) throw UnexpectedChild(children.front(), TagOf(element));
    ExpressionValue sought = AttributeOfKind(element, valueName, field.kind, scope.GetTranscoder());
    return std::make_unique<NormDiscreteExpression>(std::move(input), std::move(sought));
}

}  // namespace nbscore
