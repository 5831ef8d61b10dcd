#include <gtest/gtest.h>

#include "ModelParts.h"
#include "ScoredCase.h"
#include "selflearning/SetParts.h"
#include "standard/StandardParts.h"
#include "support/CountedAllocations.h"

namespace {

using nbscore::test::CountAllocations;
using nbscore::test::MakeModel;
using nbscore::test::TextVariable;

/// Texts too long to be held without memory of their own.
const std::string longYes(100, 'y');
const std::string longNo(90, 'n');
const std::string longCategory(80, 'c');

TEST(ScoringAllocations, AreNone_WhenAResultIsUsedAgain) {
    const auto model = MakeModel(0.01, TextVariable("target", {longYes, longNo}), {5, 4},
                                 {{"x", {longCategory, "b"}, {{1, 2}, {3, 1}}}, {"y", {"a", "b"}, {{0, 2}, {4, 1}}}});
    BaseCaseRecord record({"x", "y"});
    record.SetText(0, longCategory);
    record.SetText(1, "b");
    ScoreResult* result = nullptr;
    model->GetScore(&record, result, false);
    record.SetText(1, "a");
    model->GetScore(&record, result, false);
    record.SetText(1, "b");

    const long before = CountAllocations();
    model->GetScore(&record, result, false);
    const long used = CountAllocations() - before;
    const std::unique_ptr<ScoreResult> owned(result);
    EXPECT_GT(before, 0);
    EXPECT_EQ(used, 0);
}

TEST(ScoringAllocations, DoNotGrowWithTheNumberOfCategories_WhenAResultIsUsedAgain) {
    std::vector<std::string> values;
    for (int i = 0; i < 500; ++i)
        values.push_back("category " + std::to_string(i) + std::string(50, '.'));
    const auto model = MakeModel(0.01, TextVariable("target", values), std::vector<double>(500, 2.0),
                                 {{"x", {"a"}, {std::vector<double>(500, 1.0)}}});
    BaseCaseRecord record({"x"});
    record.SetText(0, "a");
    ScoreResult* result = nullptr;
    model->GetScore(&record, result, false);

    const long before = CountAllocations();
    model->GetScore(&record, result, false);
    const long used = CountAllocations() - before;
    const std::unique_ptr<ScoreResult> owned(result);
    // The probabilities.
    EXPECT_LE(used, 1);
}

/// What the contract asks for: a new result, its prediction, and the list in it, which is given room once.
TEST(ScoringAllocations, DoNotGrowWithTheNumberOfSubModels) {
    std::vector<nbscore::test::SubModelPart> parts;
    for (int i = 0; i < 100; ++i) {
        parts.push_back({"offer " + std::to_string(i),
                         0.5,
                         {1.0 + i, 2},
                         {{"x", {longCategory, "b"}, {{1, 2}, {3, 1.0 + i}}}, {"y", {"a", "b"}, {{0, 2}, {4, 1}}}}});
    }
    const auto set = nbscore::test::MakeSet(TextVariable("target", {longYes, longNo}), parts);
    BaseCaseRecord record({"x", "y"});
    record.SetText(0, longCategory);
    record.SetText(1, "b");
    ScoreResult* result = nullptr;
    set->GetScore(&record, result, false);

    const long before = CountAllocations();
    set->GetScore(&record, result, false);
    const long used = CountAllocations() - before;
    const std::unique_ptr<ScoreResult> owned(result);
    EXPECT_GE(used, 3);
    EXPECT_LE(used, 4);
}

/// The result keeps the memory that a case takes.
TEST(ScoringAllocations, AreTheTreatedTextAlone_ByTheStandardsRule_WhenAResultIsUsedAgain) {
    const auto model = nbscore::test::MakeStandardModel(
        0.01, TextVariable("target", {longYes, longNo}), {5, 4},
        {nbscore::test::Texts("x", {longCategory, "b"}, {{1, 2}, {3, 1}}),
         nbscore::test::Densities("y", {nbscore::test::GaussianOf(0, 1), nbscore::test::GaussianOf(1, 2)}),
         nbscore::test::Numbers("z", {1, 2}, {{1, 2}, {3, 1}})});
    BaseCaseRecord record({"x", "y", "z"});
    record.SetText(0, longCategory);
    record.SetNumber(1, 0.5);
    ScoreResult* result = nullptr;
    model->GetScore(&record, result, false);
    record.SetNumber(2, 2.0);
    model->GetScore(&record, result, false);

    const long before = CountAllocations();
    model->GetScore(&record, result, false);
    const long used = CountAllocations() - before;
    const std::unique_ptr<ScoreResult> owned(result);
    // The text as an expression sees it, once.
    EXPECT_LE(used, 1);
}

}  // namespace
