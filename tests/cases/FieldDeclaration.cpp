#include "cases/FieldDeclaration.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cases/DocumentText.h"
#include "cases/RandomExpression.h"

namespace nbscore::test {
namespace {

std::string RandomValue(const FieldDeclaration& declaration, Randomness& random) {
    static const std::array<std::string, 4> truths = {"true", "false", "1", "0"};
    const BruteForceKind kind = KindOfDataType(declaration.dataType);
    if (kind == BruteForceKind::Truth && !OneIn(4, random)) return OneOf(truths, random);
    return kind == BruteForceKind::Number ? Digits(RandomSmallNumber(random)) : RandomWord(random);
}

/// Whether a value of the field is the one that the document declares.
bool IsDeclared(const BruteForceValue& value, const std::string& declared, BruteForceKind kind) {
    const BruteForceValue meant = Converted(declared, kind);
    return !IsMissing(meant) && Converted(value, kind) == meant;
}

bool IsAllowed(const BruteForceValue& value, const FieldDeclaration& declaration, const RandomInput& input) {
    const BruteForceKind kind = KindOfDataType(declaration.dataType);
    if (IsMissing(Converted(value, kind))) return false;
    if (!declaration.invalidValue.empty() && IsDeclared(value, declaration.invalidValue, kind)) return false;
    if (!input.IsDeclared() || input.categories.empty()) return true;
    return std::ranges::any_of(input.categories,
                               [&](const std::string& category) { return IsDeclared(value, category, kind); });
}

BruteForceValue UnlessMissing(BruteForceValue value, const std::string& missingValue) {
    if (missingValue.empty() || IsMissing(value)) return value;
    return Compare(value, missingValue) == BruteForceOrder::Equal ? BruteForceValue() : value;
}

std::string SpecialValueText(const std::string& value, const std::string& property) {
    return value.empty() ? "" : "<Value" + Attribute("value", value) + Attribute("property", property) + "/>";
}

}  // namespace

FieldDeclaration MakeFieldDeclaration(bool numeric, Randomness& random) {
    static const std::array<std::string, 3> numbers = {"double", "integer", "float"};
    static const std::array<std::string, 4> texts = {"string", "string", "boolean", "date"};
    FieldDeclaration declaration;
    declaration.dataType = numeric ? OneOf(numbers, random) : OneOf(texts, random);
    if (OneIn(6, random)) declaration.missingValue = RandomValue(declaration, random);
    if (OneIn(3, random)) declaration.invalidValue = RandomValue(declaration, random);
    return declaration;
}

BruteForceField DeclaredField(BruteForceValue value, const FieldDeclaration& declaration, const RandomInput& input) {
    BruteForceField field{UnlessMissing(std::move(value), declaration.missingValue),
                          KindOfDataType(declaration.dataType)};
    field.isAllowed = IsAllowed(field.value, declaration, input);
    return field;
}

std::string DeclaredFieldText(const std::string& element, const RandomInput& input, const FieldDeclaration& declaration,
                              const std::string& expression) {
    return "<" + element + Attribute("name", input.name) +
           Attribute("optype", input.kind == RandomInput::Binned ? "continuous" : "categorical") +
           Attribute("dataType", declaration.dataType) + ">" + expression +
           SpecialValueText(declaration.missingValue, "missing") +
           SpecialValueText(declaration.invalidValue, "invalid") +
           (input.IsDeclared() ? ValuesText(input.categories) : "") + "</" + element + ">\n";
}

}  // namespace nbscore::test
