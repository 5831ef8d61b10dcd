#include "support/documents/RandomDerivedFields.h"

#include <algorithm>
#include <array>
#include <utility>

#include "support/documents/ExpressionText.h"

namespace nbscore::test {
namespace {

constexpr int mostLevels = 4;

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
    return value.empty() ? "" : ValueElement(value, property);
}

/// Calls only functions before it, so that none calls itself.
void AddFunction(BruteForceFunctions& functions, Randomness& random) {
    static const std::array<std::string, 5> dataTypes = {"", "", "double", "string", "boolean"};
    BruteForceFunction function;
    function.dataType = OneOf(dataTypes, random);
    RandomScope scope;
    scope.functions = functions;
    for (int i = Between(1, 3, random); i > 0; --i) {
        function.parameters.push_back({"p" + std::to_string(i), OneOf(dataTypes, random)});
        scope.fields.push_back({function.parameters.back().name, KindOfDataType(function.parameters.back().dataType)});
    }
    function.body = MakeRandomExpression(KindOfDataType(function.dataType), mostLevels - 1, scope, random);
    functions.emplace("f" + std::to_string(functions.size()), std::move(function));
}

RandomDerivedField MakeField(const std::string& name, const RandomScope& scope, Randomness& random) {
    static constexpr std::array<RandomInput::Kind, 6> kinds = {RandomInput::DeclaredTexts, RandomInput::DeclaredNumbers,
                                                               RandomInput::LearnedTexts,  RandomInput::LearnedNumbers,
                                                               RandomInput::Binned,        RandomInput::Binned};
    RandomDerivedField field;
    field.input.name = name;
    field.input.kind = OneOf(kinds, random);
    field.declaration = MakeFieldDeclaration(field.input.IsNumeric(), random);
    const BruteForceKind kind = KindOfDataType(field.declaration.dataType);
    field.expression = MakeRandomExpression(kind, Between(1, mostLevels, random), scope, random);
    return field;
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
    const std::string attributes =
        Declaration(input.name, input.Type() == FieldType::Bins ? "continuous" : "categorical", declaration.dataType);
    const std::string values = SpecialValueText(declaration.missingValue, "missing") +
                               SpecialValueText(declaration.invalidValue, "invalid") +
                               (input.IsDeclared() ? ValueElements(input.categories) : "");
    return XmlElement(element, attributes, expression + values) + "\n";
}

RandomDerivedFields MakeRandomDerivedFields(const std::vector<RandomScope::Field>& dataFields, Randomness& random) {
    RandomDerivedFields derived;
    for (int i = Between(0, 3, random); i > 0; --i)
        AddFunction(derived.functions, random);
    RandomScope scope;
    scope.functions = derived.functions;
    scope.fields = dataFields;
    const int count = Between(1, 6, random);
    for (int i = 0; i < count; ++i) {
        derived.fields.push_back(MakeField("derived " + std::to_string(i), scope, random));
        const RandomDerivedField& made = derived.fields.back();
        scope.fields.push_back({made.input.name, KindOfDataType(made.declaration.dataType)});
    }
    return derived;
}

void AddDerivedValues(const RandomDerivedFields& derived, BruteForceFields& values) {
    for (const RandomDerivedField& field : derived.fields) {
        // Truth values are kept as texts.
        const BruteForceKind stored = field.input.IsNumeric() ? BruteForceKind::Number : BruteForceKind::Text;
        BruteForceValue result = Converted(Evaluate(field.expression, values, derived.functions), stored);
        values[field.input.name] = DeclaredField(std::move(result), field.declaration, field.input);
    }
}

std::string TransformationsText(const RandomDerivedFields& derived, Randomness& random) {
    std::vector<std::string> elements;
    for (const auto& [name, function] : derived.functions)
        elements.push_back(FunctionText(name, function));
    for (const RandomDerivedField& field : derived.fields)
        elements.push_back(
            DeclaredFieldText("DerivedField", field.input, field.declaration, ExpressionText(field.expression)));
    std::ranges::shuffle(elements, random);
    const std::string content = Each(elements, [](const std::string& element) { return element; });
    return XmlElement("TransformationDictionary", "", "\n" + content) + "\n";
}

}  // namespace nbscore::test
