#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "count/CountedModel.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// A case with the answer that a model gives: what a document carries to be verified by.
struct TestCase {
    /// For each of the model's fields; nothing where it is missing.
    std::vector<std::optional<std::string>> values;
    /// Of a single classifier. Empty for a sub-model.
    std::string prediction;
    /// For each category, of the first few; for a sub-model the score alone.
    std::vector<std::string> probabilities;
};

/// Of more categories than this a document expects the first few probabilities only.
inline constexpr std::size_t mostExpectedProbabilities = 20;

/// The test cases of each classifier: the most frequent values of a few categories, the first of these with single
/// values missing, and single values alone. They follow from the counts alone. Answers are those of the model that the
/// document makes.
/// @param scorable what was read of the document without test cases. Cases without a finite answer are left out.
std::vector<std::vector<TestCase>> MakeTestCases(const CountedModel& model, ScoreModel& scorable);

}  // namespace nbscore
