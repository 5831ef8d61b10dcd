#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "pmml/Refusal.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

/// Three words that are numbers in constants of floating-point type only.
std::optional<double> ReadSpecialNumber(std::string_view text) {
    if (text == "NaN") return std::numeric_limits<double>::quiet_NaN();
    if (text == "INF") return std::numeric_limits<double>::infinity();
    if (text == "-INF") return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

ExpressionValue NumericConstant(Element element, std::string_view text) {
    if (text.empty()) return {};
    const auto special = element.GetAttribute(Name::dataType) == "integer" ? std::nullopt : ReadSpecialNumber(text);
    return special ? *special : DoubleAt(element, text);
}

/// Without `dataType` a Constant is a number when its whole text is one, else a text, unchanged. Under a numeric
/// `dataType` an empty text is missing, "NaN", "INF" and "-INF" are numbers of float and double, and any other text
/// that is no number is refused with VeskException 9. Under `boolean` an empty text is missing, and any but true,
/// false, 1 and 0 is refused with VeskException 5. Dates and times stay texts. `missing="true"` makes it missing.
ExpressionValue ReadConstantValue(Element element, const Transcoder& transcoder) {
    if (FlagAttribute(element, Name::missing).value_or(false)) return {};
    const std::string text = element.GetTextInside();
    const ValueKind kind = DataTypeOf(element);
    if (kind == ValueKind::Number) return NumericConstant(element, text);
    if (kind == ValueKind::Truth) return text.empty() ? ExpressionValue() : TruthAt(element, text);
    return ReadAs(kind, TextAt(element, text, transcoder));
}

std::unique_ptr<const Expression> ReadConstant(Element element, FieldScope& scope) {
    return std::make_unique<ConstantExpression>(ReadConstantValue(element, scope.GetTranscoder()));
}

/// `mapMissingTo` has the kind of the field where it reads as one, else it is a text, unchanged.
std::unique_ptr<const Expression> ReadFieldRef(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    return std::make_unique<FieldRefExpression>(ReadFieldInput(element, field, field.kind, scope.GetTranscoder()));
}

struct Kind {
    Name name;
    std::unique_ptr<const Expression> (*read)(Element element, FieldScope& scope);
};

// Aggregate and Lag read other cases than the current one: they are deliberately not supported.
constexpr Kind kinds[] = {
    {Name::Constant, ReadConstant},
    {Name::FieldRef, ReadFieldRef},
    {Name::NormContinuous, ReadNormContinuous},
    {Name::NormDiscrete, ReadNormDiscrete},
    {Name::Discretize, ReadDiscretize},
    {Name::MapValues, ReadMapValues},
    {Name::TextIndex, ReadTextIndex},
    {Name::Apply, ReadApply},
};

}  // namespace

std::unique_ptr<const Expression> ReadExpression(Element element, FieldScope& scope) {
    const auto* kind = std::ranges::find(kinds, element.GetName(), &Kind::name);
    if (kind == std::end(kinds)) throw RefusalAt(element, Refusal::ExpressionUnsupported, {element.GetTag()});
    const DeeperLevel level(scope.GetCost(), element);
    return kind->read(element, scope);
}

}  // namespace nbscore
