#include "support/documents/RandomDocument.h"

#include <algorithm>
#include <array>
#include <utility>

#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

double RandomThreshold(Randomness& random) {
    static constexpr std::array<double, 8> thresholds = {0.001, 1e-6, 1e-12, 0.5, 1.0, 2.0, 1e6, 0.0375};
    return OneOf(thresholds, random);
}

std::string DictionaryText(const RandomDocument& document, const std::string& dataFields) {
    const std::string target =
        DataField(document.targetName, document.numericTarget ? FieldType::Numbers : FieldType::Texts,
                  ValueElements(document.targetCategories));
    return XmlElement("DataDictionary", "", "\n" + target + "\n" + dataFields) + "\n";
}

std::string InputText(RandomDocument& document, const RandomInput& input, Randomness& random) {
    RandomCounts counts;
    std::string text = BayesInputText(input, document.targetCategories, counts, random);
    document.model.counts.push_back(std::move(counts));
    return text;
}

std::string ModelText(RandomDocument& document, const std::string& schema, Randomness& random) {
    const std::string target = MiningField(document.targetName, "predicted") + "\n";
    std::string inputs = "\n";
    for (const RandomInput& input : document.inputs)
        inputs += InputText(document, input, random);
    const std::string counts = CountsText(document.targetCategories, document.model.targetCounts, random);
    const std::string content = "\n" + XmlElement("MiningSchema", "", "\n" + target + schema) + "\n" +
                                XmlElement("BayesInputs", "", inputs) + "\n" +
                                BayesOutput(document.targetName, counts) + "\n";
    return XmlElement("NaiveBayesModel", Attribute("threshold", Digits(document.model.threshold)), content) + "\n";
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
        declarations.schema += MiningField(input.name) + "\n";
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
    // Sometimes equal counts, so that categories tie.
    if (OneIn(4, random)) std::ranges::fill(document.model.targetCounts, 7.0);
    document.model.threshold = RandomThreshold(random);
    document.text = PmmlDocument(DictionaryText(document, declarations.dataFields) + declarations.transformations +
                                 ModelText(document, declarations.schema, random));
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
