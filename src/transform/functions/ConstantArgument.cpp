#include "transform/functions/ConstantArgument.h"

#include "framework/ControlCharacters.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/ConstantExpression.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

/// For messages that quote a document: short, and nothing in it that a terminal obeys.
std::string Quotable(std::string_view text) {
    const std::string_view start = FirstCharacters(text, maxQuotedUnits);
    const std::string quotable = MaskControls(start);
    return start.size() < text.size() ? quotable + "..." : quotable;
}

}  // namespace

std::optional<std::string> ConstantText(const Expression& argument) {
    const auto* constant = dynamic_cast<const ConstantExpression*>(&argument);
    if (constant == nullptr || IsMissing(constant->GetValue())) return std::nullopt;
    return TextOf(constant->GetValue());
}

VeskException ArgumentRefusal(const CallParts& parts, std::size_t argument, std::string_view what,
                              std::string_view text, std::string_view reason) {
    return RefusalAt(parts.elements[argument], VeskException::InvalidContent,
                     "The " + std::string(what) + " \"" + Quotable(text) + "\" of the function \"" +
                         std::string(parts.function.name) + "\" cannot be used: " + Quotable(reason) + ".");
}

}  // namespace nbscore
