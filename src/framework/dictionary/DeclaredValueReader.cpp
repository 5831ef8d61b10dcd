#include "framework/dictionary/DeclaredValueReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <memory>
#include <string>

#include "framework/BaseTranslator.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

std::unique_ptr<ScoreValue> ValidValue(const xercesc::DOMElement* value, const XMLCh* text,
                                       const Transcoder& transcoder, bool isNumeric) {
    if (isNumeric) return std::make_unique<NumericValue>(DoubleAt(value, text));
    return std::make_unique<StringValue>(TextAt(value, text, transcoder));
}

std::unique_ptr<ScoreValue> NumberOrText(const std::string& text, bool isNumeric) {
    if (isNumeric) {
        if (const auto number = ReadNumber(text)) return std::make_unique<NumericValue>(*number);
    }
    return std::make_unique<StringValue>(text);
}

}  // namespace

ValueProperty ReadValueProperty(const xercesc::DOMElement* value) {
    constexpr XmlName propertyName = "property";
    const XMLCh* property = BaseTranslator::GetAttribute(value, propertyName);
    if (!property || BaseTranslator::IsEqual(property, "valid")) return ValueProperty::Valid;
    if (BaseTranslator::IsEqual(property, "invalid")) return ValueProperty::Invalid;
    if (BaseTranslator::IsEqual(property, "missing")) return ValueProperty::Missing;
    throw RefusalAt(value, VeskException::InconsistentDocument,
                    "\"" + ExcerptOf(property) + "\" is no property of a value: valid, invalid or missing.");
}

void ReadDeclaredValue(const xercesc::DOMElement* value, const Transcoder& transcoder, BaseDictVar& variable) {
    constexpr XmlName valueName = "value";
    constexpr XmlName displayValueName = "displayValue";
    const XMLCh* text = BaseTranslator::GetAttributeForced(value, valueName);
    const bool isNumeric = variable.GetStorageType() == ScoreDictVar::NumericStorage;
    switch (ReadValueProperty(value)) {
        case ValueProperty::Valid:
            variable.AddValidValue(ValidValue(value, text, transcoder, isNumeric),
                                   TextAt(value, BaseTranslator::GetAttribute(value, displayValueName), transcoder));
            break;
        case ValueProperty::Missing:
            variable.AddMissingValue(NumberOrText(TextAt(value, text, transcoder), isNumeric));
            break;
        case ValueProperty::Invalid:
            variable.AddInvalidValue(NumberOrText(TextAt(value, text, transcoder), isNumeric));
            break;
    }
}

}  // namespace nbscore
