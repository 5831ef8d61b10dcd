#include "transform/evaluation/ConstantExpression.h"

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "framework/NumberText.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

bool IsDeclaredMissing(Element element) {
    return FlagAttribute(element, Name::missing).value_or(false);
}

bool IsInteger(Element element) {
    return element.GetAttribute(Name::dataType) == "integer";
}

/// The three numbers that only a floating-point constant may be.
std::optional<double> ReadSpecialNumber(std::string_view text) {
    if (text == "NaN") return std::numeric_limits<double>::quiet_NaN();
    if (text == "INF") return std::numeric_limits<double>::infinity();
    if (text == "-INF") return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

ExpressionValue NumericConstant(Element element, std::string_view text) {
    if (text.empty()) return {};
    const auto special = IsInteger(element) ? std::nullopt : ReadSpecialNumber(text);
    return special ? *special : DoubleAt(element, text);
}

ExpressionValue TruthConstant(Element element, std::string_view text) {
    if (text.empty()) return {};
    if (const auto truth = TruthOf(std::string(text))) return *truth;
    throw RefusalAt(element, VeskException::InvalidContent,
                    "\"" + ExcerptOf(text) + "\" is no truth value: true, false, 1 or 0.");
}

ExpressionValue ReadConstantValue(Element element, const Transcoder& transcoder) {
    if (IsDeclaredMissing(element)) return {};
    const std::string text = element.GetTextInside();
    const ValueKind kind = DataTypeOf(element);
    if (kind == ValueKind::Number) return NumericConstant(element, text);
    if (kind == ValueKind::Truth) return TruthConstant(element, text);
    return ReadAs(kind, TextAt(element, text, transcoder));
}

}  // namespace

ConstantExpression::ConstantExpression(ExpressionValue constant) : value(std::move(constant)) {}

ExpressionValue ConstantExpression::ValueFor(const FieldValues&) const {
    return CopyOf(value);
}

std::unique_ptr<const Expression> ReadConstant(Element element, FieldScope& scope) {
    return std::make_unique<ConstantExpression>(ReadConstantValue(element, scope.GetTranscoder()));
}

}  // namespace nbscore
