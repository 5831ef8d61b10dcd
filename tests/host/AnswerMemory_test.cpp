#include "host/AnswerMemory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace nbscore::test {
namespace {

using Rows = std::vector<RowNumber>;

std::optional<std::string> Recall(AnswerMemory& memory, const Rows& rows) {
    const AnswerMemory::Answer* const answer = memory.Find(rows);
    if (answer == nullptr) return std::nullopt;
    return std::string(memory.GetText(*answer));
}

TEST(AnswerMemory, GivesBackWhatWasKeptForTheSameRows) {
    AnswerMemory memory(2);
    memory.Keep(Rows{1, 2}, "a", false);
    memory.Keep(Rows{2, 1}, "b", true);
    EXPECT_EQ(Recall(memory, {1, 2}), "a");
    EXPECT_FALSE(memory.Find(Rows{1, 2})->hasNonFiniteNumber);
    EXPECT_EQ(Recall(memory, {2, 1}), "b");
    EXPECT_TRUE(memory.Find(Rows{2, 1})->hasNonFiniteNumber);
    EXPECT_EQ(Recall(memory, {2, 2}), std::nullopt);
}

TEST(AnswerMemory, CasesOfNoValuesAreAllTheSame) {
    AnswerMemory memory(0);
    EXPECT_EQ(Recall(memory, {}), std::nullopt);
    memory.Keep({}, "prior", false);
    EXPECT_EQ(Recall(memory, {}), "prior");
}

TEST(AnswerMemory, TheFirstTextStays_WhenACaseIsKeptTwice) {
    AnswerMemory memory(1);
    memory.Keep(Rows{7}, "first", false);
    memory.Keep(Rows{7}, "second", false);
    EXPECT_EQ(Recall(memory, {7}), "first");
}

/// So many that some of them are neighbours by their hash, whatever the hash.
constexpr RowNumber manyCases = 30'000;

Rows RowsOf(RowNumber number) {
    return {number % 2, number / 2, 5};
}

TEST(AnswerMemory, NoCaseIsTakenForAnother_WhenThereAreMany) {
    AnswerMemory memory(3);
    for (RowNumber i = 0; i < manyCases; ++i)
        memory.Keep(RowsOf(i), std::to_string(i), i % 3 == 0);
    for (RowNumber i = 0; i < manyCases; ++i) {
        ASSERT_EQ(Recall(memory, RowsOf(i)), std::to_string(i));
        ASSERT_EQ(memory.Find(RowsOf(i))->hasNonFiniteNumber, i % 3 == 0);
        ASSERT_EQ(Recall(memory, RowsOf(manyCases + i)), std::nullopt);
    }
}

/// Asks for a case and keeps it when it is new, as scoring does.
void Meet(AnswerMemory& memory, RowNumber number) {
    memory.MakeRoom();
    if (memory.IsUseful() && memory.Find(Rows{number}) == nullptr) memory.Keep(Rows{number}, "text", false);
}

TEST(AnswerMemory, ForgetsAndGoesOn_WhenItIsFullAndCasesRepeat) {
    AnswerMemory memory(1);
    const RowNumber cases = 200'000;
    RowNumber forgotten = 0;
    for (RowNumber i = 0; i < cases; ++i) {
        Meet(memory, i);
        memory.MakeRoom();
        if (memory.Find(Rows{i}) == nullptr) ++forgotten;
        ASSERT_TRUE(memory.IsUseful());
    }
    EXPECT_GT(forgotten, 0U);
    EXPECT_LT(forgotten, cases / 1000);
    EXPECT_EQ(Recall(memory, {0}), std::nullopt);
}

TEST(AnswerMemory, IsNoLongerUseful_WhenHardlyAnyCaseRepeats) {
    AnswerMemory memory(1);
    RowNumber number = 0;
    for (; number < 200'000 && memory.IsUseful(); ++number)
        Meet(memory, number);
    EXPECT_FALSE(memory.IsUseful());
    EXPECT_GT(number, 1000U) << "it is not given up before it was tried";
}

TEST(AnswerMemory, IsNotTried_WhenCasesHaveVeryManyValues) {
    EXPECT_TRUE(AnswerMemory(64).IsUseful());
    EXPECT_FALSE(AnswerMemory(65).IsUseful());
    EXPECT_FALSE(AnswerMemory(100'000).IsUseful());
}

TEST(AnswerMemory, KeepsNoMoreThanItsBound_WhenTextsAreLong) {
    AnswerMemory memory(1);
    const std::string text(1 << 20, 'x');
    RowNumber kept = 0;
    for (RowNumber i = 0; i < 100; ++i) {
        memory.Keep(Rows{i}, text, false);
        if (memory.Find(Rows{i}) != nullptr) ++kept;
    }
    EXPECT_EQ(kept, 8U);
    EXPECT_EQ(Recall(memory, {0}), text);
    memory.MakeRoom();
    EXPECT_EQ(memory.Find(Rows{0}), nullptr);
    memory.Keep(Rows{50}, text, false);
    EXPECT_EQ(Recall(memory, {50}), text);
}

TEST(AnswerMemory, KeepsNoMoreThanItsBound_WhenNobodyMakesRoom) {
    AnswerMemory memory(1);
    for (RowNumber i = 0; i < 300'000; ++i)
        memory.Keep(Rows{i}, "", false);
    EXPECT_EQ(Recall(memory, {0}), "");
    EXPECT_EQ(Recall(memory, {299'999}), std::nullopt);
}

}  // namespace
}  // namespace nbscore::test
