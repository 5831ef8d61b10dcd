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

std::unique_ptr<ScoreValue> ValidValue(const XMLCh* text, const Transcoder& transcoder, bool isNumeric) {
    if (isNumeric) return std::make_unique<NumericValue>(BaseTranslator::VerifyDouble(text));
    return std::make_unique<StringValue>(transcoder.transcodeTo(text));
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
    throw VeskException(VeskException::InconsistentDocument,
                        "\"" + ExcerptOf(property) + "\" is no property of a value: valid, invalid or missing.");
}

void ReadDeclaredValue(const xercesc::DOMElement* value, const Transcoder& transcoder, BaseDictVar& variable) {
    constexpr XmlName valueName = "value";
    constexpr XmlName displayValueName = "displayValue";
    const XMLCh* text = BaseTranslator::GetAttribute(value, valueName);
    if (!text) throw AttributeLacking(value, valueName);
    const bool isNumeric = variable.GetStorageType() == ScoreDictVar::NumericStorage;
    switch (ReadValueProperty(value)) {
        case ValueProperty::Valid:
            variable.AddValidValue(ValidValue(text, transcoder, isNumeric),
                                   transcoder.transcodeTo(BaseTranslator::GetAttribute(value, displayValueName)));
            break;
        case ValueProperty::Missing:
            variable.AddMissingValue(NumberOrText(transcoder.transcodeTo(text), isNumeric));
            break;
        case ValueProperty::Invalid:
            variable.AddInvalidValue(NumberOrText(transcoder.transcodeTo(text), isNumeric));
            break;
    }
}

}  // namespace nbscore
