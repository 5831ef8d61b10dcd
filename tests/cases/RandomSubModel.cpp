#include "cases/RandomSubModel.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "cases/DocumentText.h"

namespace nbscore::test {
namespace {

using Texts = std::vector<std::string>;

/// Equal ones, an empty one, and some that look like what tells equal ones apart.
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

/// Below a negative threshold, priors that vanish and priors that cancel out each other come up too.
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
    std::string text = "<BayesInputs>\n";
    for (const RandomInput& input : subModel.inputs) {
        RandomCounts counts;
        text += BayesInputText(input, target.categories, counts, random);
        subModel.numbers.counts.push_back(InPairs(counts));
    }
    return text + "</BayesInputs>\n";
}

std::string DerivedFieldsText(const Texts& names) {
    std::string text = "<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\">";
    for (const std::string& name : names)
        text += "<MiningField" + Attribute("name", name) + "/>";
    return text + "</Extension>\n";
}

/// Lists what the sub-model uses, and more, in any order.
std::string SchemaText(bool first, const RandomTarget& target, const std::vector<RandomField>& used,
                       const std::vector<RandomField>& fields, Randomness& random) {
    Texts lines = {"<MiningField" + Attribute("name", target.name) + " usageType=\"predicted\"/>\n"};
    Texts derived;
    Texts listed;
    const auto list = [&](const RandomField& field) {
        const std::string& name = field.declared.name;
        const bool known = std::ranges::find(listed, name) != listed.end();
        if (known && (first || !OneIn(3, random))) return;
        listed.push_back(name);
        if (field.derived)
            derived.push_back(name);
        else
            lines.push_back("<MiningField" + Attribute("name", name) + "/>\n");
    };
    for (const RandomField& field : used)
        list(field);
    for (const RandomField& field : fields) {
        if (OneIn(5, random)) list(field);
    }
    if (!derived.empty()) lines.push_back(DerivedFieldsText(derived));
    std::ranges::shuffle(lines, random);
    std::string text = "<MiningSchema>\n";
    for (const std::string& line : lines)
        text += line;
    return text + "</MiningSchema>\n";
}

/// One or two entries in either order: a zero may be left out, or an entry of an unknown value stand for it.
std::string OutputText(const RandomTarget& target, const BruteForcePair& counts, Randomness& random) {
    Texts entries;
    for (std::size_t k = 0; k < counts.size(); ++k) {
        const bool replaced = counts[k] == 0.0 && OneIn(2, random);
        if (replaced && k == 1 && OneIn(2, random)) continue;
        entries.push_back("<TargetValueCount" + Attribute("value", replaced ? "98765" : target.categories[k]) +
                          Attribute("count", replaced ? "5" : Digits(counts[k])) + "/>");
    }
    if (OneIn(2, random)) std::ranges::reverse(entries);
    std::string text = "<BayesOutput" + Attribute("fieldName", target.name) + "><TargetValueCounts>";
    for (const std::string& entry : entries)
        text += entry;
    return text + "</TargetValueCounts></BayesOutput>\n";
}

/// Assessment figures in any order and number. The sample size counts as a standard deviation, the last one stays.
Texts AssessmentTexts(RandomSubModel& subModel, Randomness& random) {
    static const std::array<std::string, 4> names = {"meanPerformance", "stdDevPerformance", "trainingSampleSize",
                                                     "note"};
    Texts texts;
    for (int i = Between(0, 4, random); i > 0; --i) {
        const std::string& name = OneOf(names, random);
        const double value = Between(-100, 5000, random) / 64.0;
        if (name == names[0]) subModel.assessmentMean = value;
        if (name == names[1] || name == names[2]) subModel.assessmentStdDev = value;
        texts.push_back("<Extension" + Attribute("name", name) + Attribute("value", Digits(value)) + "/>\n");
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

}  // namespace

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
    subModel.text = "<NaiveBayesModel" + Attribute("modelName", subModel.name) +
                    Attribute("threshold", Digits(subModel.numbers.threshold)) +
                    (first || OneIn(2, random) ? " algorithmName=\"SelfLearning\"" : "") + ">\n" +
                    Interleaved(parts, assessment, random) + "</NaiveBayesModel>\n";
    return subModel;
}

}  // namespace nbscore::test
