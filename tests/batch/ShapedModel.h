#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/ModelTables.h"
#include "naivebayes/NaiveBayesModel.h"
#include "selflearning/SelfLearningModel.h"
#include "support/documents/RandomDraws.h"

/// @file
/// Models of given shapes and random numbers, configured by calls: shapes that loops treat differently, and ones that
/// no document gives.

namespace nbscore::test {

struct ShapedPredictor {
    /// Predictors of one name share their variable.
    std::string name;
    PredictorTables::Kind kind = PredictorTables::Texts;
    /// Of bins: the cutpoints and one.
    std::size_t categories = 1;
};

/// A single classifier.
/// @param withoutTable how many of the last predictors are given no count table.
std::unique_ptr<NaiveBayesModel> MakeShapedModel(std::size_t targetCategories, double threshold,
                                                 const std::vector<ShapedPredictor>& predictors,
                                                 std::size_t withoutTable, Randomness& random);

/// A set, whose sub-models have inputs, orders and categories of their own, thresholds that leave some with a prior of
/// zero, and here and there no input at all.
std::unique_ptr<SelfLearningModel> MakeShapedSet(std::size_t targetCategories, std::size_t subModels,
                                                 Randomness& random);

/// A set whose sub-models read the inputs of these numbers in these orders. Inputs are of every kind and of 1 to 40
/// categories, and every sub-model that reads one tells the same categories apart.
std::unique_ptr<SelfLearningModel> MakeSetReading(std::size_t targetCategories,
                                                  const std::vector<std::vector<std::size_t>>& inputsOfSubModels,
                                                  Randomness& random);

/// A set whose sub-models read one variable, each with categories that no other has.
std::unique_ptr<SelfLearningModel> MakeSetOfStrangers(std::size_t subModels, std::size_t categoriesOfEach,
                                                      Randomness& random);

}  // namespace nbscore::test
