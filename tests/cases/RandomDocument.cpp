#include "cases/RandomDocument.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cases/DocumentText.h"

namespace nbscore::test {
namespace {

double RandomThreshold(Randomness& random) {
    static constexpr std::array<double, 8> thresholds = {0.001, 1e-6, 1e-12, 0.5, 1.0, 2.0, 1e6, 0.0375};
    return OneOf(thresholds, random);
}

std::string DictionaryText(const RandomDocument& document, const std::string& dataFields) {
    return "<DataDictionary>\n<DataField" + DeclarationText(document.targetName, document.numericTarget, false) + ">" +
           ValuesText(document.targetCategories) + "</DataField>\n" + dataFields + "</DataDictionary>\n";
}

std::string InputText(RandomDocument& document, const RandomInput& input, Randomness& random) {
    RandomCounts counts;
    std::string text = BayesInputText(input, document.targetCategories, counts, random);
    document.model.counts.push_back(std::move(counts));
    return text;
}

std::string ModelText(RandomDocument& document, const std::string& schema, Randomness& random) {
    std::string text = "<NaiveBayesModel" + Attribute("threshold", Digits(document.model.threshold)) +
                       ">\n<MiningSchema>\n<MiningField" + Attribute("name", document.targetName) +
                       " usageType=\"predicted\"/>\n" + schema + "</MiningSchema>\n<BayesInputs>\n";
    for (const RandomInput& input : document.inputs)
        text += InputText(document, input, random);
    return text + "</BayesInputs>\n<BayesOutput" + Attribute("fieldName", document.targetName) + ">" +
           CountsText(document.targetCategories, document.model.targetCounts, random) +
           "</BayesOutput>\n</NaiveBayesModel>\n";
}

}  // namespace

RandomDocument MakeRandomDocument(Randomness& random) {
    std::vector<RandomInput> inputs;
    const int count = Between(1, 6, random);
    for (int i = 0; i < count; ++i)
        inputs.push_back(MakeRandomInput("input " + std::to_string(i), random));
    RandomDeclarations declarations;
    for (const RandomInput& input : inputs) {
        declarations.dataFields += FieldText("DataField", input, "");
        declarations.schema += "<MiningField" + Attribute("name", input.name) + "/>\n";
    }
    return MakeRandomDocument(std::move(inputs), declarations, random);
}

RandomDocument MakeRandomDocument(std::vector<RandomInput> inputs, const RandomDeclarations& declarations,
                                  Randomness& random) {
    RandomDocument document;
    document.inputs = std::move(inputs);
    document.targetName = "target";
    document.numericTarget = OneIn(3, random);
    const int targets = OneIn(20, random) ? 1 : Between(2, 6, random);
    for (int k = 0; k < targets; ++k) {
        document.targetCategories.push_back(document.numericTarget ? std::to_string(k * 3 - 4) : RandomText(k, random));
        document.model.targetCounts.push_back(RandomCount(random));
    }
    // Equal counts now and then, so that categories tie.
    if (OneIn(4, random)) std::ranges::fill(document.model.targetCounts, 7.0);
    document.model.threshold = RandomThreshold(random);
    document.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\">\n" +
                    DictionaryText(document, declarations.dataFields) + declarations.transformations +
                    ModelText(document, declarations.schema, random) + "</PMML>\n";
    return document;
}

RandomCase MakeRandomCase(const RandomDocument& document, Randomness& random) {
    RandomCase made;
    for (const RandomInput& input : document.inputs) {
        made.cells.push_back(RandomCell(input, random));
        made.codes.push_back(input.CodeOf(made.cells.back()));
    }
    return made;
}

}  // namespace nbscore::test
