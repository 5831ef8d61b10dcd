#include "transform/functions/Strings.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "framework/Blanks.h"
#include "transform/evaluation/ValueReading.h"
#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

ExpressionValue UpperCase(Arguments arguments) {
    return BoundedText(UpperCaseOf(TextOf(arguments[0])));
}

ExpressionValue LowerCase(Arguments arguments) {
    return BoundedText(LowerCaseOf(TextOf(arguments[0])));
}

/// The argument as a whole number that is not below the least one allowed.
std::optional<double> WholeNumber(const ExpressionValue& argument, double least) {
    const auto number = NumberOf(argument);
    const bool isFine = number && std::isfinite(*number) && std::trunc(*number) == *number && *number >= least;
    return isFine ? number : std::nullopt;
}

ExpressionValue Substring(Arguments arguments) {
    const auto start = WholeNumber(arguments[1], 1.0);
    const auto length = WholeNumber(arguments[2], 0.0);
    if (!start || !length) return {};
    const std::string text = TextOf(arguments[0]);
    return BoundedText(std::string(FirstCharacters(WithoutCharacters(text, *start - 1.0), *length)));
}

ExpressionValue TrimBlanks(Arguments arguments) {
    return BoundedText(std::string(WithoutBlanks(TextOf(arguments[0]))));
}

ExpressionValue Concatenate(Arguments arguments) {
    std::string whole;
    for (const ExpressionValue& argument : arguments) {
        whole += TextOf(argument);
        if (whole.size() > longestText) return {};
    }
    return whole;
}

ExpressionValue StringLength(Arguments arguments) {
    return static_cast<double>(CountCharacters(TextOf(arguments[0])));
}

constexpr BuiltInFunction functions[] = {
    {"uppercase", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text in upper case, character by character by Unicode's simple mapping, whatever the language: ß stays ß.",
     UpperCase},
    {"lowercase", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text in lower case, character by character by Unicode's simple mapping, whatever the language.", LowerCase},
    {"substring", "text, start, length", 3, 3, MissingRule::GivesMissing, ValueKind::Text,
     "So many characters from the start on, the first being 1, or as many as there are; undefined unless start is a "
     "whole number from 1 on and length one from 0 on.",
     Substring},
    {"trimBlanks", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Text,
     "The text without the spaces, tabs and line ends at its beginning and its end.", TrimBlanks},
    {"concat", "text, text, ...", 2, BuiltInFunction::anyNumber, MissingRule::GivesMissing, ValueKind::Text,
     "The texts one behind the other.", Concatenate},
    {"stringLength", "text", 1, 1, MissingRule::GivesMissing, ValueKind::Number,
     "How many characters (Unicode code points) the text has.", StringLength}};

}  // namespace

std::span<const BuiltInFunction> StringFunctions() {
    return functions;
}

}  // namespace nbscore
