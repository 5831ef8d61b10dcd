#include "support/documents/RandomDerivedDocument.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <utility>

namespace nbscore::test {
namespace {

constexpr int sampledCases = 40;
constexpr std::size_t mostCategories = 6;

/// At least a text and a number, so that expressions can read both.
void AddDataFields(RandomDerivedDocument& made, Randomness& random) {
    static constexpr std::array<RandomInput::Kind, 3> kinds = {RandomInput::LearnedTexts, RandomInput::Binned,
                                                               RandomInput::LearnedNumbers};
    const int count = Between(2, 5, random);
    for (int i = 0; i < count; ++i) {
        const RandomInput::Kind kind = i < 2 ? kinds[static_cast<std::size_t>(i)] : OneOf(kinds, random);
        made.columns.push_back({"data " + std::to_string(i), kind, {}, {}});
        made.declarations.push_back(MakeFieldDeclaration(made.columns.back().IsNumeric(), random));
    }
}

std::string MakeCell(const RandomInput& column, const FieldDeclaration& declaration, Randomness& random) {
    static constexpr std::array<const char*, 4> truths = {"true", "false", "1", "0"};
    if (OneIn(9, random)) return "";
    if (declaration.dataType == "boolean" && !OneIn(6, random)) return OneOf(truths, random);
    return column.IsNumeric() ? Digits(RandomSmallNumber(random)) : RandomWord(random);
}

BruteForceFields ValuesOf(const RandomDerivedDocument& made, const std::vector<std::string>& cells) {
    BruteForceFields values;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const RandomInput& column = made.columns[i];
        BruteForceValue value;
        if (!cells[i].empty()) value = column.IsNumeric() ? Converted(cells[i], BruteForceKind::Number) : cells[i];
        values[column.name] = DeclaredField(std::move(value), made.declarations[i], column);
    }
    AddDerivedValues(made.derived, values);
    return values;
}

std::vector<std::string> MakeCells(const RandomDerivedDocument& made, Randomness& random) {
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < made.columns.size(); ++i)
        cells.push_back(MakeCell(made.columns[i], made.declarations[i], random));
    return cells;
}

/// Those that a document can declare.
std::vector<BruteForceValue> DistinctValues(const std::string& field, const std::vector<BruteForceFields>& samples) {
    std::vector<BruteForceValue> distinct;
    for (const BruteForceFields& sample : samples) {
        const BruteForceValue& value = sample.at(field).value;
        const auto* number = std::get_if<double>(&value);
        if (IsMissing(value) || AsText(value).empty() || (number != nullptr && !std::isfinite(*number))) continue;
        if (std::ranges::find(distinct, value) == distinct.end()) distinct.push_back(value);
    }
    return distinct;
}

/// Takes values from the samples as the input's categories, or as cutpoints at them or beside them.
void FitToSamples(RandomInput& input, const std::vector<BruteForceFields>& samples, Randomness& random) {
    std::vector<BruteForceValue> values = DistinctValues(input.name, samples);
    std::ranges::shuffle(values, random);
    if (values.size() > mostCategories) values.resize(mostCategories);
    if (values.empty()) values = {input.IsNumeric() ? BruteForceValue(1.0) : BruteForceValue("a")};
    for (const BruteForceValue& value : values) {
        if (input.kind == RandomInput::Binned) {
            input.cutpoints.push_back(std::get<double>(value) + (OneIn(2, random) ? 0.0 : 0.25));
        } else {
            input.categories.push_back(input.IsNumeric() ? Digits(std::get<double>(value)) : AsText(value));
        }
    }
    std::ranges::sort(input.cutpoints);
    input.cutpoints.erase(std::unique(input.cutpoints.begin(), input.cutpoints.end()), input.cutpoints.end());
}

RandomDeclarations Declare(const RandomDerivedDocument& made, const std::vector<RandomInput>& inputs,
                           Randomness& random) {
    RandomDeclarations declarations;
    declarations.transformations = TransformationsText(made.derived, random);
    for (std::size_t i = 0; i < made.columns.size(); ++i) {
        const RandomInput& column = made.columns[i];
        declarations.dataFields += DeclaredFieldText("DataField", column, made.declarations[i], "");
        const bool isInput = std::ranges::find(inputs, column.name, &RandomInput::name) != inputs.end();
        if (isInput || OneIn(2, random)) declarations.schema += MiningField(column.name) + "\n";
    }
    std::string names;
    for (const RandomInput& input : inputs) {
        if (input.name.starts_with("derived")) names += MiningField(input.name);
    }
    declarations.schema += DerivedFieldsExtension(names) + "\n";
    return declarations;
}

int CodeOf(const RandomInput& input, const BruteForceValue& value) {
    if (IsMissing(value)) return -1;
    if (input.kind != RandomInput::Binned) {
        for (std::size_t i = 0; i < input.categories.size(); ++i) {
            const bool same = input.IsNumeric() ? AsNumber(value) == std::strtod(input.categories[i].c_str(), nullptr)
                                                : AsText(value) == input.categories[i];
            if (same) return static_cast<int>(i);
        }
        return -1;
    }
    const double number = std::get<double>(value);
    // NaN counts as a number above the first cutpoint only.
    if (std::isnan(number)) return 1;
    return static_cast<int>(std::ranges::count_if(input.cutpoints, [&](double c) { return number > c; }));
}

}  // namespace

RandomDerivedDocument MakeRandomDerivedDocument(Randomness& random) {
    RandomDerivedDocument made;
    AddDataFields(made, random);
    std::vector<RandomScope::Field> dataFields;
    for (std::size_t i = 0; i < made.columns.size(); ++i)
        dataFields.push_back({made.columns[i].name, KindOfDataType(made.declarations[i].dataType)});
    made.derived = MakeRandomDerivedFields(dataFields, random);
    std::vector<BruteForceFields> samples;
    for (int i = 0; i < sampledCases; ++i)
        samples.push_back(ValuesOf(made, MakeCells(made, random)));

    // The last derived field reads the others: it is always an input.
    std::vector<RandomInput> inputs;
    for (RandomDerivedField& field : made.derived.fields) {
        FitToSamples(field.input, samples, random);
        if (&field == &made.derived.fields.back() || !OneIn(3, random)) inputs.push_back(field.input);
    }
    for (const RandomInput& column : made.columns) {
        if (!OneIn(6, random)) continue;
        inputs.push_back(column);
        FitToSamples(inputs.back(), samples, random);
    }
    std::ranges::shuffle(inputs, random);
    const RandomDeclarations declarations = Declare(made, inputs, random);
    made.document = MakeRandomDocument(std::move(inputs), declarations, random);
    return made;
}

RandomDerivedCase MakeRandomDerivedCase(const RandomDerivedDocument& made, Randomness& random) {
    RandomDerivedCase drawn;
    drawn.cells = MakeCells(made, random);
    drawn.values = ValuesOf(made, drawn.cells);
    for (const RandomInput& input : made.document.inputs)
        drawn.codes.push_back(CodeOf(input, drawn.values.at(input.name).value));
    return drawn;
}

}  // namespace nbscore::test
