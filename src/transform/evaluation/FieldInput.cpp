#include "transform/evaluation/FieldInput.h"

#include <cmath>

#include "pmml/Refusal.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {

std::optional<double> FieldInput::NumberIn(const FieldValues& fields) const {
    const std::optional<double> number = NumberOf(fields.Get(field));
    return number && !std::isnan(*number) ? number : std::nullopt;
}

FieldReference ReadFieldReference(Element element, FieldScope& scope) {
    return scope.Resolve(element, RequiredAttribute(element, Name::field));
}

FieldInput ReadFieldInput(Element element, const FieldReference& field, ValueKind resultKind,
                          const Transcoder& transcoder) {
    return {field, AttributeOfKind(element, Name::mapMissingTo, resultKind, transcoder)};
}

}  // namespace nbscore
