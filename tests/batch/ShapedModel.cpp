#include "batch/ShapedModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/ModelParts.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace nbscore::test {
namespace {

/// Often zero and often equal, so that ties are common.
double DrawCount(Randomness& random) {
    if (OneIn(6, random)) return std::uniform_real_distribution<double>(0.0, 100.0)(random);
    return Between(0, 2, random);
}

std::vector<double> DrawCounts(std::size_t number, Randomness& random) {
    std::vector<double> counts;
    for (std::size_t k = 0; k < number; ++k)
        counts.push_back(DrawCount(random));
    return counts;
}

NBayesInputBase::Matrix DrawMatrix(std::size_t rows, std::size_t columns, Randomness& random) {
    NBayesInputBase::Matrix matrix;
    // Now and then all categories are alike to a predictor, so that what ties before it ties behind it.
    const bool alike = OneIn(3, random);
    for (std::size_t row = 0; row < rows; ++row) {
        matrix.push_back(DrawCounts(columns, random));
        if (alike) std::ranges::fill(matrix.back(), 1.0);
    }
    return matrix;
}

std::string TextOf(std::size_t category) {
    return std::string(category % 11, 'w') + std::to_string(category);
}

double NumberOf(std::size_t category) {
    return static_cast<double>(category) * 0.5 - 3.0;
}

template <typename Value>
std::vector<Value> Shuffled(std::size_t first, std::size_t number, Value (*valueOf)(std::size_t), Randomness& random) {
    std::vector<Value> values;
    for (std::size_t i = 0; i < number; ++i)
        values.push_back(valueOf(first + i));
    std::ranges::shuffle(values, random);
    return values;
}

/// @param first tells the categories from those of other predictors of the variable.
INBVeskEncoder* MakeEncoder(const ShapedPredictor& shape, std::size_t first, Randomness& random) {
    switch (shape.kind) {
        case PredictorTables::Texts:
            return new NBCatStringEncoder(Shuffled(first, shape.categories, TextOf, random));
        case PredictorTables::Numbers:
            return new NBCatNumericEncoder(Shuffled(first, shape.categories, NumberOf, random));
        default: {
            std::vector<double> cutpoints = Shuffled(first, shape.categories - 1, NumberOf, random);
            std::ranges::sort(cutpoints);
            return new NBinningEncoder(cutpoints);
        }
    }
}

/// A bin more than there are cutpoints, and one more still where there are none.
std::size_t CountRows(const ShapedPredictor& shape) {
    return std::max<std::size_t>(shape.categories, shape.kind == PredictorTables::Bins ? 2 : 1);
}

/// The variable of this name, which declares missing values; made when there is none.
const ScoreDictVar* VariableOf(const ShapedPredictor& shape, BaseDictionary& dictionary) {
    if (const ScoreDictVar* known = dictionary.GetVar(shape.name)) return known;
    auto var = shape.kind == PredictorTables::Bins      ? ContinuousVariable(shape.name)
               : shape.kind == PredictorTables::Numbers ? NumberVariable(shape.name, {})
                                                        : TextVariable(shape.name, {});
    var->AddMissingValue(std::make_unique<NumericValue>(-99.0));
    var->AddMissingValue(std::make_unique<NumericValue>(NumberOf(0)));
    var->AddMissingValue(std::make_unique<StringValue>("n/a"));
    var->AddMissingValue(std::make_unique<StringValue>(TextOf(0)));
    dictionary.AddVar(shape.name, var.release());
    return dictionary.GetVar(shape.name);
}

std::unique_ptr<BaseDictVar> MakeTarget(std::size_t categories) {
    std::vector<std::string> values;
    for (std::size_t k = 0; k < categories; ++k)
        values.push_back("c" + std::to_string(k));
    return TextVariable("target", values);
}

std::vector<ShapedPredictor> DrawInputs(Randomness& random) {
    const ShapedPredictor word{"word", PredictorTables::Texts, 7};
    const ShapedPredictor number{"number", PredictorTables::Numbers, 5};
    const ShapedPredictor level{"level", PredictorTables::Bins, 4};
    const ShapedPredictor other{"other", PredictorTables::Texts, 40};
    static const std::array<std::vector<ShapedPredictor>, 7> lists = {{{word, number, level},
                                                                       {word, number, level},
                                                                       {level, number, word},
                                                                       {word, word, other},
                                                                       {},
                                                                       {level},
                                                                       {other}}};
    return OneOf(lists, random);
}

/// Every fifth sub-model or so has a prior of zero.
std::pair<double, std::vector<double>> DrawPriors(std::size_t targetCategories, Randomness& random) {
    static constexpr std::array<double, 4> thresholds = {0.001, 0.5, 1e-12, 2.0};
    std::vector<double> counts = DrawCounts(targetCategories, random);
    if (!OneIn(5, random)) return {OneOf(thresholds, random), counts};
    counts[static_cast<std::size_t>(Between(0, 1, random))] = 2.0;
    return {-2.0, counts};
}

void PrepareSubModel(SelfLearningModel& set, int position, std::size_t targetCategories, Randomness& random) {
    const auto [threshold, counts] = DrawPriors(targetCategories, random);
    set.SetThreshold(threshold);
    set.SetModelName(position, "offer " + std::to_string(position % 10));
    set.SetTargetCounts(counts);
}

void AddSubModel(SelfLearningModel& set, int position, BaseDictionary& dictionary, std::size_t targetCategories,
                 const std::vector<ShapedPredictor>& predictors, std::size_t first, Randomness& random) {
    PrepareSubModel(set, position, targetCategories, random);
    for (const ShapedPredictor& predictor : predictors) {
        set.AddPredictorVar(position, predictor.name, VariableOf(predictor, dictionary));
        set.AddEncoder(position, 0, MakeEncoder(predictor, first, random));
        set.SetPredCounts(position, 0, DrawMatrix(CountRows(predictor), targetCategories, random));
    }
}

struct EmptySet {
    std::unique_ptr<SelfLearningModel> set = std::make_unique<SelfLearningModel>();
    BaseDictionary* dictionary = new BaseDictionary;  // the set's own

    EmptySet(std::size_t targetCategories, std::size_t subModels) {
        auto target = MakeTarget(targetCategories);
        set->SetScoreDictionary(dictionary);
        set->SetNumOfModels(static_cast<int>(subModels));
        set->SetTargetVar(target.get());
        dictionary->AddVar("target", target.release());
    }
};

}  // namespace

std::unique_ptr<NaiveBayesModel> MakeShapedModel(std::size_t targetCategories, double threshold,
                                                 const std::vector<ShapedPredictor>& predictors,
                                                 std::size_t withoutTable, Randomness& random) {
    auto model = std::make_unique<NaiveBayesModel>();
    auto* dictionary = new BaseDictionary;
    model->SetScoreDictionary(dictionary);
    auto target = MakeTarget(targetCategories);
    model->SetThreshold(threshold);
    model->SetTargetVar(target.get());
    dictionary->AddVar("target", target.release());
    model->SetTargetCounts(DrawCounts(targetCategories, random));
    for (std::size_t j = 0; j < predictors.size(); ++j) {
        model->AddPredictorVar(predictors[j].name, VariableOf(predictors[j], *dictionary));
        model->AddEncoder(MakeEncoder(predictors[j], 0, random));
        if (j + withoutTable >= predictors.size()) continue;
        model->SetPredCounts(0, DrawMatrix(CountRows(predictors[j]), targetCategories, random));
    }
    return model;
}

std::unique_ptr<SelfLearningModel> MakeShapedSet(std::size_t targetCategories, std::size_t subModels,
                                                 Randomness& random) {
    EmptySet made(targetCategories, subModels);
    for (std::size_t m = 0; m < subModels; ++m) {
        AddSubModel(*made.set, static_cast<int>(m), *made.dictionary, targetCategories, DrawInputs(random),
                    static_cast<std::size_t>(Between(0, 3, random)), random);
    }
    return std::move(made.set);
}

std::unique_ptr<SelfLearningModel> MakeSetReading(std::size_t targetCategories,
                                                  const std::vector<std::vector<std::size_t>>& inputsOfSubModels,
                                                  Randomness& random) {
    static constexpr std::array<PredictorTables::Kind, 3> kinds = {PredictorTables::Texts, PredictorTables::Numbers,
                                                                   PredictorTables::Bins};
    EmptySet made(targetCategories, inputsOfSubModels.size());
    for (std::size_t m = 0; m < inputsOfSubModels.size(); ++m) {
        const auto position = static_cast<int>(m);
        PrepareSubModel(*made.set, position, targetCategories, random);
        for (const std::size_t input : inputsOfSubModels[m]) {
            const ShapedPredictor shape{"input " + std::to_string(input), kinds[input % kinds.size()],
                                        1 + input * 7 % 40};
            // The same categories in the same order for each sub-model.
            Randomness order(input);
            made.set->AddPredictorVar(position, shape.name, VariableOf(shape, *made.dictionary));
            made.set->AddEncoder(position, 0, MakeEncoder(shape, 0, order));
            made.set->SetPredCounts(position, 0, DrawMatrix(CountRows(shape), targetCategories, random));
        }
    }
    return std::move(made.set);
}

std::unique_ptr<SelfLearningModel> MakeSetOfStrangers(std::size_t subModels, std::size_t categoriesOfEach,
                                                      Randomness& random) {
    EmptySet made(2, subModels);
    for (std::size_t m = 0; m < subModels; ++m) {
        AddSubModel(*made.set, static_cast<int>(m), *made.dictionary, 2,
                    {{"word", PredictorTables::Texts, categoriesOfEach}}, m * categoriesOfEach, random);
    }
    return std::move(made.set);
}

}  // namespace nbscore::test
