#include "batch/SubModelGroup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>

#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

using Groups = std::vector<std::vector<std::size_t>>;

/// Lists of positions, in the order of their first.
Groups InOrder(Groups groups) {
    std::ranges::sort(groups);
    return groups;
}

class SubModelGrouping : public testing::Test {
protected:
    PredictorTables Reading(const ScoreDictVar& var, std::vector<std::string> categories) {
        PredictorTables predictor;
        predictor.var = &var;
        predictor.kind = PredictorTables::Texts;
        for (std::string& category : categories)
            predictor.texts.push_back(&texts.emplace_back(std::move(category)));
        return predictor;
    }

    void Add(std::vector<PredictorTables> predictors) {
        set.classifiers.emplace_back();
        set.classifiers.back().predictors = std::move(predictors);
    }

    std::unique_ptr<BaseDictVar> word = test::TextVariable("word", {});
    std::unique_ptr<BaseDictVar> other = test::TextVariable("other", {});
    std::deque<std::string> texts;
    ModelTables set;
};

TEST_F(SubModelGrouping, PutsThoseTogetherThatReadTheSameInTheSameOrder) {
    const PredictorTables a = Reading(*word, {"a"});
    const PredictorTables b = Reading(*other, {"b", "c"});
    Add({a, b});
    Add({b, a});
    Add({a, b});
    Add({});
    Add({a});
    Add({});
    EXPECT_EQ(InOrder(GroupSubModels(set)), (Groups{{0, 2}, {1}, {3, 5}, {4}}));
}

TEST_F(SubModelGrouping, KeepsThoseApartThatReadAVariableInDifferentWays) {
    PredictorTables numbers = Reading(*word, {});
    numbers.kind = PredictorTables::Numbers;
    Add({Reading(*word, {"a"})});
    Add({numbers});
    EXPECT_EQ(InOrder(GroupSubModels(set)), (Groups{{0}, {1}}));
}

TEST_F(SubModelGrouping, IsEmpty_WithoutSubModels) {
    EXPECT_TRUE(GroupSubModels(set).empty());
}

TEST_F(SubModelGrouping, DividesThoseWhoseCategoriesDifferMuch) {
    constexpr std::size_t subModels = 100;
    for (std::size_t m = 0; m < subModels; ++m) {
        std::vector<std::string> own;
        for (int i = 0; i < 50; ++i)
            own.push_back(std::to_string(m) + " " + std::to_string(i));
        Add({Reading(*word, own)});
    }
    const Groups groups = GroupSubModels(set);
    EXPECT_GT(groups.size(), 1u);
    EXPECT_LT(groups.size(), subModels);
    std::vector<std::size_t> all;
    for (const auto& group : groups)
        all.insert(all.end(), group.begin(), group.end());
    std::ranges::sort(all);
    for (std::size_t m = 0; m < subModels; ++m)
        EXPECT_EQ(all.at(m), m);
    EXPECT_EQ(all.size(), subModels);
}

TEST_F(SubModelGrouping, DividesNone_WhoseManyCategoriesAreTheSame) {
    std::vector<std::string> shared;
    for (int i = 0; i < 50; ++i)
        shared.push_back(std::to_string(i));
    for (int m = 0; m < 100; ++m)
        Add({Reading(*word, shared)});
    EXPECT_EQ(GroupSubModels(set).size(), 1u);
}

TEST_F(SubModelGrouping, TakesCutpointsThatAreNoNumbers) {
    PredictorTables bins = Reading(*word, {});
    bins.kind = PredictorTables::Bins;
    bins.numbers = {std::numeric_limits<double>::quiet_NaN(), 1.0};
    Add({bins});
    Add({bins});
    EXPECT_EQ(InOrder(GroupSubModels(set)), (Groups{{0, 1}}));
}

}  // namespace
}  // namespace nbscore
