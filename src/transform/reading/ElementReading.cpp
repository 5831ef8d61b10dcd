#include "transform/reading/ElementReading.h"

#include <memory>
#include <utility>

#include "pmml/FieldDeclarationReader.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {

std::vector<Element> ChildrenOf(Element element) {
    std::vector<Element> children;
    for (const Element child : element.GetChildren()) {
        if (!child.Is(Name::Extension)) children.push_back(child);
    }
    return children;
}

VeskException UnexpectedChild(Element child, const std::string& parent) {
    return RefusalAt(child, Refusal::ChildUnexpected, {child.GetTag(), parent});
}

ValueKind DataTypeOf(Element element) {
    const auto dataType = element.GetAttribute(Name::dataType);
    if (!dataType) return ValueKind::Any;
    if (IsNumericDataType(*dataType)) return ValueKind::Number;
    return dataType == "boolean" ? ValueKind::Truth : ValueKind::Text;
}

ExpressionValue WrittenValue(Element element, std::string_view text, ValueKind wanted, const Transcoder& transcoder) {
    if (wanted == ValueKind::Number) return DoubleAt(element, text);
    return TextAt(element, text, transcoder);
}

ExpressionValue WrittenAttribute(Element element, Name name, ValueKind wanted, const Transcoder& transcoder) {
    const auto text = element.GetAttribute(name);
    return text ? WrittenValue(element, *text, wanted, transcoder) : ExpressionValue();
}

ExpressionValue AttributeOfKind(Element element, Name name, ValueKind kind, const Transcoder& transcoder) {
    const auto text = element.GetAttribute(name);
    return text ? ReadAs(kind, TextAt(element, *text, transcoder)) : ExpressionValue();
}

bool TruthAt(Element element, std::string_view text) {
    if (const auto truth = TruthOf(std::string(text))) return *truth;
    throw RefusalAt(element, Refusal::NoTruthValue, {ExcerptOf(text)});
}

FieldReference ReadFieldReference(Element element, FieldScope& scope) {
    return scope.Resolve(element, RequiredAttribute(element, Name::field));
}

std::unique_ptr<const ExpressionValue> StandIn(ExpressionValue value) {
    return IsMissing(value) ? nullptr : std::make_unique<const ExpressionValue>(std::move(value));
}

std::unique_ptr<const ExpressionValue> ReadStandIn(Element element, Name name, ValueKind kind,
                                                   const Transcoder& transcoder) {
    return StandIn(AttributeOfKind(element, name, kind, transcoder));
}

FieldInput ReadFieldInput(Element element, const FieldReference& field, ValueKind resultKind,
                          const Transcoder& transcoder) {
    return {field, ReadStandIn(element, Name::mapMissingTo, resultKind, transcoder)};
}

}  // namespace nbscore
