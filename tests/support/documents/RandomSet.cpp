#include "support/documents/RandomSet.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nbscore::test {
namespace {

using Texts = std::vector<std::string>;

/// A field that inputs may use: one of the data dictionary, or one that renames another.
struct RandomField {
    RandomInput declared;
    /// Where its values stand in a case.
    std::size_t column = 0;
    bool derived = false;
};

/// Few names, so that equal ones occur; an empty one, and some that look like an index that makes names unique.
std::string RandomName(Randomness& random) {
    static const std::array<std::string, 9> names = {"card",     "loan", "",  "card_0",   "ä <&>",
                                                     "a, \"b\"", "0",    "1", "insurance"};
    return OneOf(names, random);
}

double RandomThreshold(Randomness& random) {
    static constexpr std::array<double, 7> usual = {0.001, 1e-6, 1e-12, 0.5, 1.0, 2.0, 1e6};
    static constexpr std::array<double, 10> strange = {-5.0,   -3.0,   -0.25, -1e-3, 5e-324,
                                                       1e-320, 1e-300, 1e300, 1e308, -1e308};
    return OneIn(4, random) ? OneOf(strange, random) : OneOf(usual, random);
}

/// With a negative threshold, sometimes counts whose priors are zero or cancel each other.
BruteForcePair RandomTargetCounts(double threshold, Randomness& random) {
    BruteForcePair counts = {RandomCount(random), RandomCount(random)};
    if (threshold >= 0.0) return counts;
    switch (Between(0, 3, random)) {
        case 0:
            counts[static_cast<std::size_t>(Between(0, 1, random))] = -threshold;
            return counts;
        case 1:
            return {-threshold - 2.0, -threshold + 2.0};
        default:
            return counts;
    }
}

/// The field as one sub-model uses it.
RandomInput UseOf(const RandomInput& field, Randomness& random) {
    RandomInput use = field;
    if (use.kind == RandomInput::Binned) {
        while (use.cutpoints.size() > 1 && OneIn(2, random))
            use.cutpoints.erase(use.cutpoints.begin() + Between(0, static_cast<int>(use.cutpoints.size()) - 1, random));
    } else if (!use.IsDeclared()) {
        std::ranges::shuffle(use.categories, random);
        use.categories.resize(static_cast<std::size_t>(Between(1, static_cast<int>(use.categories.size()), random)));
    }
    return use;
}

std::vector<BruteForcePair> InPairs(const RandomCounts& counts) {
    std::vector<BruteForcePair> pairs;
    for (const auto& row : counts)
        pairs.push_back({row.at(0), row.at(1)});
    return pairs;
}

std::string InputsText(RandomSubModel& subModel, const RandomTarget& target, Randomness& random) {
    std::string inputs = "\n";
    for (const RandomInput& input : subModel.inputs) {
        RandomCounts counts;
        inputs += BayesInputText(input, target.categories, counts, random);
        subModel.numbers.counts.push_back(InPairs(counts));
    }
    return XmlElement("BayesInputs", "", inputs) + "\n";
}

std::string Joined(const Texts& texts) {
    return Each(texts, [](const std::string& text) { return text; });
}

/// Lists what the sub-model uses, and more, in any order.
std::string SchemaText(bool first, const RandomTarget& target, const std::vector<RandomField>& used,
                       const std::vector<RandomField>& fields, Randomness& random) {
    Texts lines = {MiningField(target.name, "predicted") + "\n"};
    std::string derived;
    Texts listed;
    const auto list = [&](const RandomField& field) {
        const std::string& name = field.declared.name;
        const bool known = std::ranges::find(listed, name) != listed.end();
        if (known && (first || !OneIn(3, random))) return;
        listed.push_back(name);
        if (field.derived)
            derived += MiningField(name);
        else
            lines.push_back(MiningField(name) + "\n");
    };
    for (const RandomField& field : used)
        list(field);
    for (const RandomField& field : fields) {
        if (OneIn(5, random)) list(field);
    }
    if (!derived.empty()) lines.push_back(DerivedFieldsExtension(derived) + "\n");
    std::ranges::shuffle(lines, random);
    return XmlElement("MiningSchema", "", "\n" + Joined(lines)) + "\n";
}

/// One or two entries in either order: a zero may be left out, or be replaced by an entry of an unknown value.
std::string OutputText(const RandomTarget& target, const BruteForcePair& counts, Randomness& random) {
    Texts entries;
    for (std::size_t k = 0; k < counts.size(); ++k) {
        const bool replaced = counts[k] == 0.0 && OneIn(2, random);
        if (replaced && k == 1 && OneIn(2, random)) continue;
        entries.push_back(replaced ? TargetValueCount("98765", "5")
                                   : TargetValueCount(target.categories[k], Digits(counts[k])));
    }
    if (OneIn(2, random)) std::ranges::reverse(entries);
    return BayesOutput(target.name, TargetValueCounts(Joined(entries))) + "\n";
}

std::string ExtensionText(const std::string& name, const std::string& value) {
    return XmlElement("Extension", Attribute("name", name) + Attribute("value", value));
}

/// Assessment figures in any order and number. The sample size counts as a standard deviation; the last one counts.
Texts AssessmentTexts(RandomSubModel& subModel, Randomness& random) {
    static const std::array<std::string, 4> names = {"meanPerformance", "stdDevPerformance", "trainingSampleSize",
                                                     "note"};
    Texts texts;
    for (int i = Between(0, 4, random); i > 0; --i) {
        const std::string& name = OneOf(names, random);
        const double value = Between(-100, 5000, random) / 64.0;
        if (name == names[0]) subModel.assessmentMean = value;
        if (name == names[1] || name == names[2]) subModel.assessmentStdDev = value;
        texts.push_back(ExtensionText(name, Digits(value)) + "\n");
    }
    return texts;
}

/// Both lists in one, each in its own order.
std::string Interleaved(const Texts& one, const Texts& other, Randomness& random) {
    std::string text;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < one.size() || j < other.size()) {
        const bool takesOne = j == other.size() || (i < one.size() && OneIn(2, random));
        text += takesOne ? one[i++] : other[j++];
    }
    return text;
}

void UseFields(RandomSubModel& subModel, const std::vector<RandomField>& used, Randomness& random) {
    for (const RandomField& field : used) {
        subModel.inputs.push_back(UseOf(field.declared, random));
        subModel.columns.push_back(field.column);
    }
}

/// @param first whether it is the document's first sub-model, whose schema may list no field twice.
RandomSubModel MakeRandomSubModel(bool first, const RandomTarget& target, const std::vector<RandomField>& fields,
                                  Randomness& random) {
    RandomSubModel subModel;
    subModel.name = RandomName(random);
    subModel.numbers.threshold = RandomThreshold(random);
    subModel.numbers.targetCounts = RandomTargetCounts(subModel.numbers.threshold, random);
    std::vector<RandomField> used;
    for (int i = OneIn(8, random) ? 0 : Between(1, 5, random); i > 0; --i)
        used.push_back(OneOf(fields, random));
    UseFields(subModel, used, random);

    Texts rest = {InputsText(subModel, target, random), OutputText(target, subModel.numbers.targetCounts, random)};
    if (subModel.inputs.empty() && OneIn(2, random)) rest.erase(rest.begin());
    if (OneIn(3, random)) std::ranges::reverse(rest);
    Texts parts = {SchemaText(first, target, used, fields, random)};
    parts.insert(parts.end(), rest.begin(), rest.end());
    const Texts assessment = AssessmentTexts(subModel, random);
    const std::string content = "\n" + Interleaved(parts, assessment, random);
    const std::string algorithm = first || OneIn(2, random) ? Attribute("algorithmName", "SelfLearning") : "";
    const std::string attributes =
        Attribute("modelName", subModel.name) + Attribute("threshold", Digits(subModel.numbers.threshold)) + algorithm;
    subModel.text = XmlElement("NaiveBayesModel", attributes, content) + "\n";
    return subModel;
}

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

/// The mark of the target of sub-models; any field may have it.
std::string MarkText(bool marked) {
    return marked ? ExtensionText("isSelfLearningTarget", "true") : "";
}

/// @param marked the position of the marked field, the target's being 0; -1 when none is marked.
std::string DictionaryText(const RandomSet& set, int marked) {
    std::string fields = "\n";
    fields += DataField(set.target.name, set.target.numeric ? FieldType::Numbers : FieldType::Texts,
                        MarkText(marked == 0) + ValueElements(set.target.categories)) +
              "\n";
    for (std::size_t i = 0; i < set.columns.size(); ++i)
        fields += FieldText("DataField", set.columns[i], MarkText(marked == static_cast<int>(i) + 1));
    return XmlElement("DataDictionary", "", fields) + "\n";
}

/// Appends fields that rename others, some of them derived themselves.
/// @returns their declarations.
std::string AddDerivedFields(RandomSet& set, std::vector<RandomField>& fields, Randomness& random) {
    if (!OneIn(2, random)) return "";
    std::string text = "\n";
    for (int i = Between(0, 3, random); i > 0; --i) {
        RandomField field = OneOf(fields, random);
        const std::string expression = FieldRef(field.declared.name);
        field.derived = true;
        field.declared.name = "derived " + std::to_string(i);
        std::ranges::shuffle(field.declared.categories, random);
        text += FieldText("DerivedField", field.declared, expression);
        set.derivedNames.push_back(field.declared.name);
        set.derivedColumns.push_back(field.column);
        fields.push_back(std::move(field));
    }
    return XmlElement("TransformationDictionary", "", text) + "\n";
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
    std::string content = DictionaryText(set, marked) + derivedText;
    for (int m = 0; m < subModels; ++m) {
        set.subModels.push_back(MakeRandomSubModel(m == 0, set.target, fields, random));
        content += set.subModels.back().text;
    }
    set.text = PmmlDocument(content);
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
