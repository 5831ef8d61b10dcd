#include "cases/RandomDerivedFields.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cases/DocumentText.h"
#include "cases/ExpressionText.h"

namespace nbscore::test {
namespace {

constexpr int mostLevels = 4;

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
    std::string text = "<TransformationDictionary>\n";
    for (const std::string& element : elements)
        text += element;
    return text + "</TransformationDictionary>\n";
}

}  // namespace nbscore::test
