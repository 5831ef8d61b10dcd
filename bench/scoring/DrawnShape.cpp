#include "scoring/DrawnShape.h"

#include <algorithm>
#include <cmath>

namespace nbscore::bench {
namespace {

/// Small numbers as often as large ones.
std::size_t BetweenByOrder(std::size_t least, std::size_t greatest, Random& random) {
    const double low = std::log(static_cast<double>(least));
    const double high = std::log(static_cast<double>(greatest));
    const double drawn = std::exp(std::uniform_real_distribution<double>(low, high)(random));
    return std::clamp(static_cast<std::size_t>(drawn), least, greatest);
}

/// Each sub-model reads some inputs of its own, none of which another reads.
std::vector<std::vector<std::size_t>> DrawDifferent(std::size_t subModels, std::size_t inputs) {
    std::vector<std::vector<std::size_t>> lists(subModels);
    for (std::size_t input = 0; input < inputs; ++input)
        lists[input % subModels].push_back(input);
    return lists;
}

}  // namespace

std::string DrawnShape::Describe() const {
    std::size_t predictors = 0;
    for (const std::vector<std::size_t>& inputs : inputsOfClassifiers)
        predictors += inputs.size();
    const auto [fewest, most] = std::ranges::minmax(categories);
    std::string text = std::to_string(predictors) + " predictors";
    if (subModels > 0) {
        text += " of " + std::to_string(subModels) + " sub-models, " + std::to_string(categories.size()) + " inputs";
    }
    return text + " of " + std::to_string(fewest) + " to " + std::to_string(most) + " categories, " +
           std::to_string(targetCategories) + " target categories, " +
           std::to_string(static_cast<int>(100.0 * missingShare)) + " % missing, codes of " +
           std::to_string(codeBytes) + ", " + std::to_string(cases) + " cases";
}

DrawnShape DrawShape(ShapeClass shapeClass, Random& random, std::size_t mostNumbers) {
    DrawnShape shape;
    std::size_t inputs = Between(1, 100, random);
    switch (shapeClass) {
        case ShapeClass::FewTargets:
            shape.targetCategories = Between(2, 5, random);
            shape.inputsOfClassifiers = {DrawSome(inputs, inputs, random)};
            break;
        case ShapeClass::ManyTargets:
            shape.targetCategories = BetweenByOrder(6, 200, random);
            shape.inputsOfClassifiers = {DrawSome(inputs, inputs, random)};
            break;
        case ShapeClass::SetOfAlike: {
            shape.subModels = BetweenByOrder(1, 500, random);
            const std::vector<std::size_t> read =
                DrawSome(Between(1, std::min<std::size_t>(inputs, 20), random), inputs, random);
            shape.inputsOfClassifiers.assign(shape.subModels, read);
            break;
        }
        case ShapeClass::SetOfSome:
            shape.subModels = BetweenByOrder(2, 500, random);
            for (std::size_t m = 0; m < shape.subModels; ++m)
                shape.inputsOfClassifiers.push_back(
                    DrawSome(Between(1, std::min<std::size_t>(inputs, 20), random), inputs, random));
            break;
        case ShapeClass::SetOfDifferent:
            shape.subModels = Between(1, std::max<std::size_t>(inputs / 2, 1), random);
            shape.inputsOfClassifiers = DrawDifferent(shape.subModels, inputs);
            break;
    }
    const std::size_t mostCategories = BetweenByOrder(2, 50, random);
    for (std::size_t input = 0; input < inputs; ++input)
        shape.categories.push_back(Between(1, mostCategories, random));
    shape.missingShare = Between(0, 1, random) == 0 ? 0.0 : std::uniform_real_distribution<double>(0.0, 0.3)(random);
    shape.codeBytes = std::size_t{1} << Between(0, 2, random);
    std::size_t numbersOfCase = shape.inputsOfClassifiers.size() * shape.targetCategories;
    for (const std::vector<std::size_t>& read : shape.inputsOfClassifiers)
        numbersOfCase += read.size() * shape.targetCategories;
    shape.cases = BetweenByOrder(10, std::clamp<std::size_t>(mostNumbers / numbersOfCase, 10, 1'000'000), random);
    return shape;
}

DrawnModel::DrawnModel(const DrawnShape& shape, Random& random) {
    std::uniform_real_distribution<double> number(0.05, 1.0);
    for (std::size_t input = 0; input < shape.categories.size(); ++input) {
        vars.emplace_back("field" + std::to_string(input), ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
        std::vector<std::string>& ofInput = texts.emplace_back();
        for (std::size_t code = 0; code < shape.categories[input]; ++code)
            ofInput.push_back("c" + std::to_string(code));
    }
    vars.emplace_back("target", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    tables.target = &vars.back();
    tables.isSet = shape.subModels > 0;
    for (std::size_t k = 0; k < shape.targetCategories; ++k) {
        targetValues.emplace_back("t" + std::to_string(k));
        tables.targetCategories.push_back(&targetValues.back());
    }
    for (const std::vector<std::size_t>& inputs : shape.inputsOfClassifiers) {
        ClassifierTables& classifier = tables.classifiers.emplace_back();
        for (std::size_t k = 0; k < shape.targetCategories; ++k) {
            classifier.priors.push_back(number(random));
            classifier.targetCounts.push_back(static_cast<double>(k + 1));
        }
        for (const std::size_t input : inputs) {
            PredictorTables& predictor = classifier.predictors.emplace_back();
            predictor.var = &vars[input];
            predictor.kind = PredictorTables::Texts;
            for (const std::string& text : texts[input])
                predictor.texts.push_back(&text);
            std::vector<std::vector<double>>& factors =
                probabilities.emplace_back(shape.categories[input], std::vector<double>(shape.targetCategories));
            for (std::vector<double>& row : factors)
                std::ranges::generate(row, [&] { return number(random); });
            predictor.probabilities = &factors;
        }
    }
}

}  // namespace nbscore::bench
