#include "framework/transform/FieldRefExpression.h"

#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/NumberText.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

ExpressionValue ReadMissingReplacement(const xercesc::DOMElement* element, ScoreDictVar::StorageType storage,
                                       const Transcoder& transcoder) {
    constexpr XmlName mapMissingToName = "mapMissingTo";
    const XMLCh* xmlText = BaseTranslator::GetAttribute(element, mapMissingToName);
    if (!xmlText) return {};
    std::string text = TextAt(element, xmlText, transcoder);
    const auto number = storage == ScoreDictVar::NumericStorage ? ReadNumber(text) : std::nullopt;
    return number ? ExpressionValue(*number) : ExpressionValue(std::move(text));
}

}  // namespace

FieldRefExpression::FieldRefExpression(const FieldReference& referredField, ExpressionValue missingReplacement)
    : field(referredField), replacement(std::move(missingReplacement)) {}

ExpressionValue FieldRefExpression::Evaluate(const FieldValues& fields) const {
    ExpressionValue value = fields.Get(field);
    return IsMissing(value) ? replacement : value;
}

std::unique_ptr<Expression> ReadFieldRef(const xercesc::DOMElement* element, FieldScope& scope) {
    constexpr XmlName fieldName = "field";
    const FieldReference field = scope.Resolve(element, BaseTranslator::GetAttributeForced(element, fieldName));
    return std::make_unique<FieldRefExpression>(field,
                                                ReadMissingReplacement(element, field.storage, scope.GetTranscoder()));
}

}  // namespace nbscore
