#include "cases/RandomDerivedFields.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cases/DocumentText.h"
#include "cases/ExpressionText.h"

namespace nbscore::test {
namespace {

constexpr int mostLevels = 4;

BruteForceKind KindOf(const RandomInput& dataField) {
    return dataField.IsNumeric() ? BruteForceKind::Number : BruteForceKind::Text;
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
    static const std::array<std::string, 3> numeric = {"double", "integer", "float"};
    static const std::array<std::string, 4> textual = {"string", "string", "boolean", "date"};
    RandomDerivedField field;
    field.input.name = name;
    field.input.kind = OneOf(kinds, random);
    const bool isNumeric = field.input.IsNumeric();
    field.dataType = isNumeric ? OneOf(numeric, random) : OneOf(textual, random);
    if (OneIn(6, random)) field.missingValue = isNumeric ? Digits(RandomSmallNumber(random)) : RandomWord(random);
    const auto kind = isNumeric                     ? BruteForceKind::Number
                      : field.dataType == "boolean" ? BruteForceKind::Truth
                                                    : BruteForceKind::Text;
    field.expression = MakeRandomExpression(kind, Between(1, mostLevels, random), scope, random);
    return field;
}

std::string FieldText(const RandomDerivedField& field) {
    const RandomInput& input = field.input;
    return "<DerivedField" + Attribute("name", input.name) +
           Attribute("optype", input.kind == RandomInput::Binned ? "continuous" : "categorical") +
           Attribute("dataType", field.dataType) + ">" + ExpressionText(field.expression) +
           MissingValueText(field.missingValue) + (input.IsDeclared() ? ValuesText(input.categories) : "") +
           "</DerivedField>\n";
}

}  // namespace

RandomDerivedFields MakeRandomDerivedFields(const std::vector<RandomInput>& dataFields, Randomness& random) {
    RandomDerivedFields derived;
    for (int i = Between(0, 3, random); i > 0; --i)
        AddFunction(derived.functions, random);
    RandomScope scope;
    scope.functions = derived.functions;
    for (const RandomInput& field : dataFields)
        scope.fields.push_back({field.name, KindOf(field)});
    const int count = Between(1, 6, random);
    for (int i = 0; i < count; ++i) {
        derived.fields.push_back(MakeField("derived " + std::to_string(i), scope, random));
        scope.fields.push_back({derived.fields.back().input.name, KindOfDataType(derived.fields.back().dataType)});
    }
    return derived;
}

void AddDerivedValues(const RandomDerivedFields& derived, BruteForceFields& values) {
    for (const RandomDerivedField& field : derived.fields) {
        // Truth values are kept as texts.
        const BruteForceKind stored = field.input.IsNumeric() ? BruteForceKind::Number : BruteForceKind::Text;
        const BruteForceValue result = Converted(Evaluate(field.expression, values, derived.functions), stored);
        values[field.input.name] = {UnlessDeclaredMissing(result, field.missingValue), KindOfDataType(field.dataType)};
    }
}

BruteForceValue UnlessDeclaredMissing(BruteForceValue value, const std::string& missingValue) {
    if (missingValue.empty() || IsMissing(value)) return value;
    return Compare(value, missingValue) == BruteForceOrder::Equal ? BruteForceValue() : value;
}

std::string TransformationsText(const RandomDerivedFields& derived, Randomness& random) {
    std::vector<std::string> elements;
    for (const auto& [name, function] : derived.functions)
        elements.push_back(FunctionText(name, function));
    for (const RandomDerivedField& field : derived.fields)
        elements.push_back(FieldText(field));
    std::ranges::shuffle(elements, random);
    std::string text = "<TransformationDictionary>\n";
    for (const std::string& element : elements)
        text += element;
    return text + "</TransformationDictionary>\n";
}

}  // namespace nbscore::test
