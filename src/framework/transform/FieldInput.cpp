#include "framework/transform/FieldInput.h"

#include <cmath>

#include "framework/BaseTranslator.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ValueReading.h"
#include "framework/xml/XmlName.h"

namespace nbscore {

std::optional<double> FieldInput::NumberIn(const FieldValues& fields) const {
    const std::optional<double> number = NumberOf(fields.Get(field));
    return number && !std::isnan(*number) ? number : std::nullopt;
}

FieldReference ReadFieldReference(const xercesc::DOMElement* element, FieldScope& scope) {
    constexpr XmlName fieldName = "field";
    return scope.Resolve(element, BaseTranslator::GetAttributeForced(element, fieldName));
}

FieldInput ReadFieldInput(const xercesc::DOMElement* element, const FieldReference& field, ValueKind resultKind,
                          const Transcoder& transcoder) {
    constexpr XmlName mapMissingToName = "mapMissingTo";
    return {field, AttributeOfKind(element, mapMissingToName, resultKind, transcoder)};
}

}  // namespace nbscore
