#include "transform/evaluation/ValueKind.h"

#include <optional>
#include <string>
#include <utility>

#include "transform/evaluation/ValueReading.h"

namespace nbscore {
namespace {

template <typename Held>
ExpressionValue ValueOrMissing(const std::optional<Held>& held) {
    return held ? ExpressionValue(*held) : ExpressionValue();
}

}  // namespace

ExpressionValue CastTo(ValueKind kind, ExpressionValue value) {
    if (IsMissing(value)) return value;
    switch (kind) {
        case ValueKind::Number:
            return ValueOrMissing(NumberOf(value));
        case ValueKind::Truth:
            return ValueOrMissing(TruthOf(value));
        case ValueKind::Text:
            if (!std::holds_alternative<std::string>(value)) return TextOf(value);
            break;
        case ValueKind::Any:
            break;
    }
    return value;
}

ExpressionValue ReadAs(ValueKind kind, std::string text) {
    ExpressionValue value(std::move(text));
    if (kind == ValueKind::Text) return value;
    ExpressionValue read = CastTo(kind == ValueKind::Truth ? kind : ValueKind::Number, CopyOf(value));
    if (IsMissing(read)) return value;
    return read;
}

}  // namespace nbscore
