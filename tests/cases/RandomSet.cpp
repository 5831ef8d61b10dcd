#include "cases/RandomSet.h"

#include <algorithm>
#include <cstddef>

#include "cases/DocumentText.h"

namespace nbscore::test {
namespace {

RandomTarget MakeTarget(Randomness& random) {
    RandomTarget target;
    target.numeric = OneIn(3, random);
    if (target.numeric) {
        target.categories = {"-4", "0.5"};
    } else {
        target.categories = {RandomText(0, random), RandomText(1, random)};
    }
    return target;
}

/// What tells that the field is the target of sub-models; one field's is as good as another's.
std::string MarkText(bool marked) {
    return marked ? "<Extension name=\"isSelfLearningTarget\" value=\"true\"/>" : "";
}

/// @param marked the position of the marked field, the target's being 0; -1 when none is marked.
std::string DictionaryText(const RandomSet& set, int marked) {
    std::string text = "<DataDictionary>\n<DataField" + DeclarationText(set.target.name, set.target.numeric, false) +
                       ">" + MarkText(marked == 0) + ValuesText(set.target.categories) + "</DataField>\n";
    for (std::size_t i = 0; i < set.columns.size(); ++i)
        text += FieldText("DataField", set.columns[i], MarkText(marked == static_cast<int>(i) + 1));
    return text + "</DataDictionary>\n";
}

std::string FieldRefText(const RandomField& source) {
    return "<FieldRef" + Attribute("field", source.declared.name) + "/>";
}

/// Appends fields that rename others, some of them derived themselves.
/// @returns their declarations.
std::string AddDerivedFields(RandomSet& set, std::vector<RandomField>& fields, Randomness& random) {
    if (!OneIn(2, random)) return "";
    std::string text = "<TransformationDictionary>\n";
    for (int i = Between(0, 3, random); i > 0; --i) {
        RandomField field = OneOf(fields, random);
        const std::string expression = FieldRefText(field);
        field.derived = true;
        field.declared.name = "derived " + std::to_string(i);
        std::ranges::shuffle(field.declared.categories, random);
        text += FieldText("DerivedField", field.declared, expression);
        set.derivedNames.push_back(field.declared.name);
        set.derivedColumns.push_back(field.column);
        fields.push_back(std::move(field));
    }
    return text + "</TransformationDictionary>\n";
}

}  // namespace

RandomSet MakeRandomSet(Randomness& random) {
    RandomSet set;
    set.target = MakeTarget(random);
    std::vector<RandomField> fields;
    const auto columns = static_cast<std::size_t>(Between(1, 6, random));
    for (std::size_t i = 0; i < columns; ++i) {
        set.columns.push_back(MakeRandomInput("input " + std::to_string(i), random));
        fields.push_back({set.columns.back(), i, false});
    }
    const std::string derivedText = AddDerivedFields(set, fields, random);

    const int subModels = Between(0, 8, random);
    // Without a sub-model it is the mark that makes the document a set.
    const int marked = Between(subModels == 0 ? 0 : -1, static_cast<int>(columns), random);
    set.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\">\n" + DictionaryText(set, marked) +
               derivedText;
    for (int m = 0; m < subModels; ++m) {
        set.subModels.push_back(MakeRandomSubModel(m == 0, set.target, fields, random));
        set.text += set.subModels.back().text;
    }
    set.text += "</PMML>\n";
    return set;
}

RandomSetCase MakeRandomSetCase(const RandomSet& set, Randomness& random) {
    RandomSetCase made;
    for (const RandomInput& column : set.columns)
        made.cells.push_back(RandomCell(column, random));
    for (const RandomSubModel& subModel : set.subModels) {
        std::vector<int> codes;
        for (std::size_t j = 0; j < subModel.inputs.size(); ++j)
            codes.push_back(subModel.inputs[j].CodeOf(made.cells[subModel.columns[j]]));
        made.codes.push_back(std::move(codes));
    }
    return made;
}

}  // namespace nbscore::test
