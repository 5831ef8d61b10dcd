#include "support/BruteForceFunctions.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <stdexcept>

namespace nbscore::test {
namespace {

using Values = std::vector<BruteForceValue>;
using Names = std::vector<std::string>;

bool IsOneOf(const std::string& name, const Names& names) {
    return std::ranges::find(names, name) != names.end();
}

/// The numbers, without missing ones; nothing when a value is not a number, because then there is no result.
std::optional<std::vector<double>> NumbersOf(const Values& values) {
    std::vector<double> numbers;
    for (const BruteForceValue& value : values) {
        if (IsMissing(value)) continue;
        const auto number = AsNumber(value);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    return numbers;
}

double Arithmetic(const std::string& function, double x, double y) {
    if (function == "+") return x + y;
    if (function == "-") return x - y;
    if (function == "*") return x * y;
    return x / y;
}

double OfOne(const std::string& function, double x) {
    if (function == "abs") return std::fabs(x);
    if (function == "floor") return std::floor(x);
    if (function == "ceil") return std::ceil(x);
    if (function == "-") return -x;
    return std::floor(x + 0.5);
}

double Aggregate(const std::string& function, const std::vector<double>& numbers) {
    // A sum starts at zero: the sum of a single negative zero is positive zero.
    const bool adds = function == "sum" || function == "avg";
    double result = adds ? 0.0 : numbers.at(0);
    for (std::size_t i = adds ? 0 : 1; i < numbers.size(); ++i) {
        const double next = numbers[i];
        if (adds) {
            result = result + next;
        } else if (function == "product") {
            result = result * next;
        } else if (std::isnan(next) || (function == "min" ? next < result : next > result)) {
            if (!std::isnan(result)) result = next;
        }
    }
    return function == "avg" ? result / static_cast<double>(numbers.size()) : result;
}

BruteForceValue NumericCall(const std::string& function, const Values& arguments) {
    const auto numbers = NumbersOf(arguments);
    if (!numbers || numbers->empty()) return {};
    if (IsOneOf(function, {"min", "max", "sum", "avg", "product"})) return Aggregate(function, *numbers);
    return numbers->size() == 2 ? Arithmetic(function, numbers->at(0), numbers->at(1))
                                : OfOne(function, numbers->at(0));
}

bool Comparison(const std::string& function, BruteForceOrder order) {
    if (function == "equal") return order == BruteForceOrder::Equal;
    if (function == "notEqual") return order != BruteForceOrder::Equal;
    if (function == "lessThan") return order == BruteForceOrder::Below;
    if (function == "lessOrEqual") return order == BruteForceOrder::Below || order == BruteForceOrder::Equal;
    if (function == "greaterThan") return order == BruteForceOrder::Above;
    return order == BruteForceOrder::Above || order == BruteForceOrder::Equal;
}

/// `and` and `or`: one value decides the result alone, even if others are missing.
BruteForceValue Logic(const Values& arguments, bool settling) {
    bool unknown = false;
    for (const BruteForceValue& argument : arguments) {
        const auto truth = AsTruth(argument);
        if (truth == settling) return settling;
        if (!truth) unknown = true;
    }
    return unknown ? BruteForceValue() : BruteForceValue(!settling);
}

BruteForceValue Membership(const std::string& function, const Values& arguments) {
    const bool found = std::any_of(arguments.begin() + 1, arguments.end(), [&](const BruteForceValue& other) {
        return Compare(arguments[0], other) == BruteForceOrder::Equal;
    });
    return found == (function == "isIn");
}

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::vector<std::string> CharactersOf(const std::string& text) {
    std::vector<std::string> characters;
    for (const char byte : text) {
        if (ContinuesCharacter(byte))
            characters.back() += byte;
        else
            characters.emplace_back(1, byte);
    }
    return characters;
}

/// Knows only the characters of the random documents.
std::string InUpperCase(const std::string& text) {
    std::string upper;
    for (const std::string& character : CharactersOf(text)) {
        if (character == "ä")
            upper += "Ä";
        else if (character == "ö")
            upper += "Ö";
        else if (character >= "a" && character <= "z")
            upper += static_cast<char>(character[0] - 'a' + 'A');
        else
            upper += character;
    }
    return upper;
}

BruteForceValue Substring(const Values& arguments) {
    const auto start = AsNumber(arguments[1]);
    const auto length = AsNumber(arguments[2]);
    if (!start || !length || *start < 1.0 || *length < 0.0) return {};
    if (std::floor(*start) != *start || std::floor(*length) != *length) return {};
    const std::vector<std::string> characters = CharactersOf(AsText(arguments[0]));
    std::string part;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const double number = static_cast<double>(i) + 1.0;
        if (number >= *start && number < *start + *length) part += characters[i];
    }
    return part;
}

BruteForceValue TextCall(const std::string& function, const Values& arguments) {
    if (function == "substring") return Substring(arguments);
    if (function == "uppercase") return InUpperCase(AsText(arguments[0]));
    if (function == "stringLength") return static_cast<double>(CharactersOf(AsText(arguments[0])).size());
    std::string text;
    for (const BruteForceValue& argument : arguments)
        text += AsText(argument);
    return text;
}

const Names aggregates = {"min", "max", "sum", "avg", "product"};
const Names ofNumbers = {"+", "-", "*", "/", "abs", "floor", "ceil", "round"};
const Names ofTexts = {"uppercase", "concat", "substring"};

}  // namespace

BruteForceKind KindGivenByBruteForce(const std::string& function) {
    if (function == "if") return BruteForceKind::Any;
    if (IsOneOf(function, ofTexts)) return BruteForceKind::Text;
    const bool isNumber = IsOneOf(function, aggregates) || IsOneOf(function, ofNumbers) || function == "stringLength";
    return isNumber ? BruteForceKind::Number : BruteForceKind::Truth;
}

BruteForceValue CallByBruteForce(const std::string& function, const Values& arguments) {
    if (function == "isMissing") return IsMissing(arguments[0]);
    if (function == "isNotMissing") return !IsMissing(arguments[0]);
    if (function == "and") return Logic(arguments, false);
    if (function == "or") return Logic(arguments, true);
    if (IsOneOf(function, aggregates)) return NumericCall(function, arguments);

    if (std::ranges::any_of(arguments, [](const BruteForceValue& value) { return IsMissing(value); })) return {};
    if (IsOneOf(function, ofNumbers)) return NumericCall(function, arguments);
    if (IsOneOf(function, {"isIn", "isNotIn"})) return Membership(function, arguments);
    if (IsOneOf(function, ofTexts) || function == "stringLength") return TextCall(function, arguments);
    if (function == "not") {
        const auto truth = AsTruth(arguments[0]);
        return truth ? BruteForceValue(!*truth) : BruteForceValue();
    }
    if (IsOneOf(function, {"equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"})) {
        return Comparison(function, Compare(arguments[0], arguments[1]));
    }
    throw std::logic_error("the brute-force evaluator does not know " + function);
}

}  // namespace nbscore::test
