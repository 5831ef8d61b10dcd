#include "table/ModelResults.h"

#include <gtest/gtest.h>

#include "framework/MCMV.h"
#include "support/FakeModel.h"

namespace nbscore::test {
namespace {

using Numbers = std::vector<double>;

ScoreValue* GetLabel(const ScoreDictVar& target, std::size_t position) {
    return target.GetValueLabelSet()->GetValueLabels()[position].GetValue();
}

TEST(CategoryProbabilities, OrderIsTheTargets_WhateverTheResultsOrder) {
    const auto target = MakeTextField("y", {"a", "b", "c"});
    CategoryProbabilities probabilities(*target);
    FakeResult result;
    result.AddValuePercent(GetLabel(*target, 2), 0.3);
    result.AddValuePercent(GetLabel(*target, 0), 0.1);
    result.AddValuePercent(GetLabel(*target, 1), 0.2);
    EXPECT_EQ(probabilities.GetNames(), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(probabilities.Arrange(result), (Numbers{0.1, 0.2, 0.3}));
}

TEST(CategoryProbabilities, OrderIsFoundAgain_WhenAResultHasOtherEntries) {
    const auto target = MakeTextField("y", {"a", "b"});
    CategoryProbabilities probabilities(*target);
    FakeResult result;
    result.AddValuePercent(GetLabel(*target, 0), 0.1);
    result.AddValuePercent(GetLabel(*target, 1), 0.9);
    EXPECT_EQ(probabilities.Arrange(result), (Numbers{0.1, 0.9}));
    StringValue otherB("b");
    StringValue unknown("z");
    result.Clear();
    result.AddValuePercent(&unknown, 0.7);
    result.AddValuePercent(&otherB, 0.3);
    EXPECT_EQ(probabilities.Arrange(result), (Numbers{MCMV::gMissingValue, 0.3}));
}

TEST(CategoryProbabilities, CategoryCountsOnce_WhenItIsDeclaredTwice) {
    const auto target = MakeTextField("y", {"a", "b", "a"});
    EXPECT_EQ(CategoryProbabilities(*target).GetNames(), (std::vector<std::string>{"a", "b"}));
}

TEST(CategoryProbabilities, ThereAreNone_WhenTheTargetDeclaresNoValues) {
    const auto target = MakeTextField("y");
    CategoryProbabilities probabilities(*target);
    EXPECT_TRUE(probabilities.Arrange(FakeResult()).empty());
}

}  // namespace
}  // namespace nbscore::test
