#include "framework/transform/ConstantExpression.h"

#include <xercesc/dom/DOMElement.hpp>

#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/NumberText.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ValueReading.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

bool IsDeclaredMissing(const xercesc::DOMElement* element) {
    constexpr XmlName missingName = "missing";
    return FlagAttribute(element, missingName).value_or(false);
}

bool IsInteger(const xercesc::DOMElement* element) {
    constexpr XmlName dataTypeName = "dataType";
    return BaseTranslator::IsEqual(BaseTranslator::GetAttribute(element, dataTypeName), "integer");
}

/// The three numbers that only a floating-point constant may be.
std::optional<double> ReadSpecialNumber(const XMLCh* text) {
    if (BaseTranslator::IsEqual(text, "NaN")) return std::numeric_limits<double>::quiet_NaN();
    if (BaseTranslator::IsEqual(text, "INF")) return std::numeric_limits<double>::infinity();
    if (BaseTranslator::IsEqual(text, "-INF")) return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

ExpressionValue NumericConstant(const xercesc::DOMElement* element, const XMLCh* text) {
    if (*text == 0) return {};
    const auto special = IsInteger(element) ? std::nullopt : ReadSpecialNumber(text);
    return special ? *special : DoubleAt(element, text);
}

ExpressionValue TruthConstant(const xercesc::DOMElement* element, const XMLCh* text) {
    if (*text == 0) return {};
    if (const auto truth = TruthOf(Utf8Of(text))) return *truth;
    throw RefusalAt(element, VeskException::InvalidContent,
                    "\"" + ExcerptOf(text) + "\" is no truth value: true, false, 1 or 0.");
}

ExpressionValue ReadConstantValue(const xercesc::DOMElement* element, const Transcoder& transcoder) {
    if (IsDeclaredMissing(element)) return {};
    const std::basic_string<XMLCh> xmlText = TextIn(element);
    const ValueKind kind = DataTypeOf(element);
    if (kind == ValueKind::Number) return NumericConstant(element, xmlText.c_str());
    if (kind == ValueKind::Truth) return TruthConstant(element, xmlText.c_str());
    return ReadAs(kind, TextAt(element, xmlText.c_str(), transcoder));
}

}  // namespace

ConstantExpression::ConstantExpression(ExpressionValue constant) : value(std::move(constant)) {}

ExpressionValue ConstantExpression::ValueFor(const FieldValues&) const {
    return CopyOf(value);
}

std::unique_ptr<const Expression> ReadConstant(const xercesc::DOMElement* element, FieldScope& scope) {
    return std::make_unique<ConstantExpression>(ReadConstantValue(element, scope.GetTranscoder()));
}

}  // namespace nbscore
