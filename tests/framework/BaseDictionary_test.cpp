#include "framework/BaseDictionary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/BaseDictVar.h"
#include "framework/DeathWatch.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using WatchedVar = DeathWatch<BaseDictVar>;

BaseDictVar* NewVar(const std::string& name) {
    return new BaseDictVar(name, ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
}

WatchedVar* NewWatchedVar(bool& destroyed) {
    return new WatchedVar(destroyed, "watched", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
}

TEST(BaseDictionary, IsEmpty_WhenNew) {
    const BaseDictionary dictionary;
    std::vector<ScoreDictVar*> all;
    dictionary.GetAllVars(all);

    EXPECT_THAT(all, IsEmpty());
    EXPECT_EQ(dictionary.GetVar("x"), nullptr);
}

TEST(BaseDictionary, FindsVariablesByTheNameTheyWereAddedUnder) {
    BaseDictionary dictionary;
    BaseDictVar* const age = NewVar("age");
    EXPECT_TRUE(dictionary.AddVar("years", age));

    EXPECT_EQ(dictionary.GetVar("years"), age);
    EXPECT_EQ(dictionary.GetVar("age"), nullptr);
    EXPECT_EQ(dictionary.GetVar("Years"), nullptr);
}

TEST(BaseDictionary, ListsVariablesInTheOrderOfAdding) {
    BaseDictionary dictionary;
    std::vector<ScoreDictVar*> added;
    for (const char* name : {"z", "a", "m", "b"}) {
        added.push_back(NewVar(name));
        dictionary.AddVar(name, added.back());
    }
    std::vector<ScoreDictVar*> all;
    dictionary.GetAllVars(all);

    EXPECT_EQ(all, added);
}

TEST(BaseDictionary, ReplacesTheVectorsContent) {
    BaseDictionary dictionary;
    BaseDictVar* const x = NewVar("x");
    dictionary.AddVar("x", x);
    std::vector<ScoreDictVar*> all{nullptr, nullptr};
    dictionary.GetAllVars(all);

    EXPECT_THAT(all, ElementsAre(x));
}

TEST(BaseDictionary, KeepsTheFirstAndDeletesTheSecond_WhenANameIsTaken) {
    bool destroyed = false;
    BaseDictionary dictionary;
    BaseDictVar* const first = NewVar("x");
    dictionary.AddVar("x", first);

    EXPECT_FALSE(dictionary.AddVar("x", NewWatchedVar(destroyed)));
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(dictionary.GetVar("x"), first);
    std::vector<ScoreDictVar*> all;
    dictionary.GetAllVars(all);
    EXPECT_THAT(all, ElementsAre(first));
}

TEST(BaseDictionary, KeepsAVariable_WhenItIsAddedAgain) {
    bool destroyed = false;
    BaseDictionary dictionary;
    WatchedVar* const variable = NewWatchedVar(destroyed);
    dictionary.AddVar("x", variable);

    EXPECT_FALSE(dictionary.AddVar("x", variable));
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(dictionary.GetVar("x"), variable);
}

TEST(BaseDictionary, RefusesNull) {
    BaseDictionary dictionary;

    EXPECT_FALSE(dictionary.AddVar("x", nullptr));
    std::vector<ScoreDictVar*> all;
    dictionary.GetAllVars(all);
    EXPECT_THAT(all, IsEmpty());
}

TEST(BaseDictionary, DeletesItsVariables_WhenDestroyed) {
    bool destroyed = false;
    {
        BaseDictionary dictionary;
        dictionary.AddVar("x", NewWatchedVar(destroyed));
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);
}

}  // namespace
