#include "framework/transform/ConstantExpression.h"

#include <xercesc/dom/DOMElement.hpp>

#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/NumberText.h"
#include "framework/dictionary/NumericDataType.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

/// A constant's text may stand in several pieces, plain ones and CDATA sections.
std::basic_string<XMLCh> ReadText(const xercesc::DOMElement* element) {
    std::basic_string<XMLCh> text;
    for (const xercesc::DOMNode* node = element->getFirstChild(); node; node = node->getNextSibling()) {
        const bool isText = node->getNodeType() == xercesc::DOMNode::TEXT_NODE ||
                            node->getNodeType() == xercesc::DOMNode::CDATA_SECTION_NODE;
        if (isText) text += node->getNodeValue();
    }
    return text;
}

bool IsDeclaredMissing(const xercesc::DOMElement* element) {
    constexpr XmlName missingName = "missing";
    const XMLCh* missing = BaseTranslator::GetAttribute(element, missingName);
    return missing && (BaseTranslator::IsEqual(missing, "true") || BaseTranslator::IsEqual(missing, "1"));
}

/// The three numbers that only a floating-point constant may be.
std::optional<double> ReadSpecialNumber(const XMLCh* text) {
    if (BaseTranslator::IsEqual(text, "NaN")) return std::numeric_limits<double>::quiet_NaN();
    if (BaseTranslator::IsEqual(text, "INF")) return std::numeric_limits<double>::infinity();
    if (BaseTranslator::IsEqual(text, "-INF")) return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

ExpressionValue NumericConstant(const xercesc::DOMElement* element, const XMLCh* text, bool isInteger) {
    if (*text == 0) return {};
    const auto special = isInteger ? std::nullopt : ReadSpecialNumber(text);
    return special ? *special : DoubleAt(element, text);
}

ExpressionValue ReadConstantValue(const xercesc::DOMElement* element, const Transcoder& transcoder) {
    constexpr XmlName dataTypeName = "dataType";
    if (IsDeclaredMissing(element)) return {};
    const std::basic_string<XMLCh> xmlText = ReadText(element);
    const XMLCh* dataType = BaseTranslator::GetAttribute(element, dataTypeName);
    if (dataType && IsNumericDataType(dataType)) {
        return NumericConstant(element, xmlText.c_str(), BaseTranslator::IsEqual(dataType, "integer"));
    }
    std::string text = TextAt(element, xmlText.c_str(), transcoder);
    const auto number = dataType ? std::nullopt : ReadNumber(text);
    return number ? ExpressionValue(*number) : ExpressionValue(std::move(text));
}

}  // namespace

ConstantExpression::ConstantExpression(ExpressionValue constant) : value(std::move(constant)) {}

ExpressionValue ConstantExpression::Evaluate(const FieldValues&) const {
    return value;
}

std::unique_ptr<Expression> ReadConstant(const xercesc::DOMElement* element, const Transcoder& transcoder) {
    return std::make_unique<ConstantExpression>(ReadConstantValue(element, transcoder));
}

}  // namespace nbscore
