#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "common/Drawing.h"
#include "framework/BaseDictVar.h"
#include "framework/ModelTables.h"
#include "framework/StringValue.h"

namespace nbscore::bench {

/// Of a model and its cases, all drawn.
struct DrawnShape {
    /// 0 for a single classifier.
    std::size_t subModels = 0;
    std::size_t targetCategories = 2;
    /// Of each input.
    std::vector<std::size_t> categories;
    /// The inputs that each classifier reads, in the order of its predictors.
    std::vector<std::vector<std::size_t>> inputsOfClassifiers;
    double missingShare = 0.0;
    std::size_t codeBytes = 1;
    std::size_t cases = 0;

    std::string Describe() const;
};

/// The kinds of shapes that are told apart.
enum class ShapeClass { FewTargets, ManyTargets, SetOfAlike, SetOfSome, SetOfDifferent };

/// @param mostNumbers how many factors and answers all cases together may have, which bounds the cases.
DrawnShape DrawShape(ShapeClass shapeClass, Random& random, std::size_t mostNumbers);

/// A model's tables with drawn numbers, and what these point to.
class DrawnModel {
public:
    DrawnModel(const DrawnShape& shape, Random& random);
    DrawnModel(const DrawnModel&) = delete;
    DrawnModel& operator=(const DrawnModel&) = delete;

    const ModelTables& GetTables() const { return tables; }
    /// The categories of each input by code.
    const std::vector<std::vector<std::string>>& GetTexts() const { return texts; }

private:
    std::deque<BaseDictVar> vars;
    std::vector<std::vector<std::string>> texts;
    std::deque<StringValue> targetValues;
    std::deque<std::vector<std::vector<double>>> probabilities;
    ModelTables tables;
};

}  // namespace nbscore::bench
