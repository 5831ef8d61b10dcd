// A table's own columns: found by name, taken as their fields want them, scored at once and in blocks. Derived fields
// and random documents are tested through the C interface.

#include "batch/SourceScorer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/LoadedModel.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

class SourceScorerTest : public testing::Test {
protected:
    static constexpr std::size_t cases = 100;

    SourceScorerTest() {
        for (std::size_t i = 0; i < cases; ++i) {
            codes.push_back(static_cast<std::uint8_t>(i % 3));
            sexes.emplace_back(i % 7 < 3 ? "male" : "female");
            ages.emplace_back(i % 5 == 0 ? "child" : "adult");
        }
    }

    std::vector<SourceColumn> MakeTable() const {
        return {{"age", TextViewColumn{ages, {bits.data(), 3}}},
                {"class", CodeColumn<std::uint8_t>{codes, nullptr, {}}, &classes},
                {"of no field", NumberColumn{}},
                {"sex", TextViewColumn{sexes, {}}}};
    }

    std::vector<double> Score(const std::vector<SourceColumn>& table) const {
        std::vector<double> probabilities(cases * 2);
        AnswerColumns answers;
        answers.probabilities = probabilities;
        scorer.Score(table, cases, answers);
        return probabilities;
    }

    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN),
                                                NBSCORE_CASES_DIR "/../../examples/titanic/titanic.pmml");
    const SourceScorer scorer{model.Get()};
    const std::vector<std::string_view> names = {"first", "crew", "no class"};
    const Column classes = TextViewColumn{names, {}};
    const std::vector<std::uint8_t> bits = std::vector<std::uint8_t>(14, 0b1011'0111);
    std::vector<std::uint8_t> codes;
    std::vector<std::string_view> sexes;
    std::vector<std::string_view> ages;
};

TEST_F(SourceScorerTest, AnswersAsABatchScorerDoes_ForTheSameColumnsInOrder) {
    const BatchScorer& batch = scorer.GetBatchScorer();
    ASSERT_EQ(batch.GetInputs()[0].name, "class");
    ASSERT_EQ(batch.GetInputs()[1].name, "sex");
    const InputDictionary dictionary = batch.MakeDictionary(0, names);
    const std::vector<Column> columns = {CodeColumn<std::uint8_t>{codes, &dictionary, {}}, TextViewColumn{sexes, {}},
                                         TextViewColumn{ages, {bits.data(), 3}}};
    std::vector<double> expected(cases * 2);
    AnswerColumns answers;
    answers.probabilities = expected;
    batch.Score(columns, cases, answers);
    EXPECT_EQ(expected, Score(MakeTable()));
}

TEST_F(SourceScorerTest, AnswersAlike_InBlocksOfAnySize) {
    const std::vector<double> expected = Score(MakeTable());
    for (const std::size_t casesAtOnce : {1U, 7U, 64U, 100U, 1000U}) {
        std::vector<double> all;
        std::vector<double> ofBlock;
        const auto makeRoom = [&](std::size_t count) {
            ofBlock.resize(count * 2);
            AnswerColumns answers;
            answers.probabilities = ofBlock;
            return answers;
        };
        const auto take = [&](std::size_t) { all.insert(all.end(), ofBlock.begin(), ofBlock.end()); };
        scorer.ScoreInBlocks(MakeTable(), cases, {casesAtOnce, makeRoom, take});
        EXPECT_EQ(expected, all) << casesAtOnce;
    }
}

TEST_F(SourceScorerTest, LooksForTheFieldsOfTheModel) {
    EXPECT_THAT(scorer.GetFields(), testing::UnorderedElementsAre("class", "sex", "age"));
    EXPECT_TRUE(scorer.Reads("sex"));
    EXPECT_FALSE(scorer.Reads("survived"));
}

TEST_F(SourceScorerTest, RefusesByName_WhatLacksIsThereTwiceOrCannotBeRead) {
    std::vector<SourceColumn> table = MakeTable();
    const auto expectRefused = [&](const std::string& message) {
        EXPECT_THAT([&] { Score(table); }, ThrowsMessage<std::invalid_argument>(message));
    };
    table[0].name = "another";
    expectRefused("The cases lack the column \"age\", which the model needs.");
    EXPECT_NO_THROW(scorer.Score(table, cases, {}, LackingFields::Absent));
    table[0].name = "sex";
    expectRefused("The column \"sex\" is there twice.");
    table = MakeTable();
    table[3].column = TextViewColumn{};
    expectRefused("The column \"sex\" has 0 values for 100 cases.");
    table = MakeTable();
    table[1].values = nullptr;
    expectRefused("The column \"class\" has codes and nothing that they stand for.");
    codes[42] = 3;
    table = MakeTable();
    expectRefused("The column \"class\" cannot be read: case 42 has the code 3, but the dictionary has 3 values.");
}

TEST_F(SourceScorerTest, ReadsCasesOneByOne_AsTheirFieldsWantThem) {
    std::vector<SourceColumn> table = MakeTable();
    const std::vector<float> numbers(cases, 2.5F);
    const std::vector<std::uint8_t> truths(13, 0b0000'0010);
    table[0].column = NumbersOf<float>{numbers, {}};
    table[3].column = TruthColumn{truths.data(), 0, cases, nullptr, {bits.data(), 0}};
    SourceScorer::Cases rows(scorer, table, cases, LackingFields::Refused);
    const ScoreCaseRecord& first = rows.Read(0);
    EXPECT_FALSE(first.IsIndexed());
    EXPECT_EQ("first", first.GetValueByName("class")->GetString());
    EXPECT_EQ("2.5", first.GetValueByName("age")->GetString());
    EXPECT_EQ(ScoreValue::String, first.GetValueByName("age")->GetType());
    EXPECT_EQ("false", first.GetValueByName("sex")->GetString());
    EXPECT_EQ("true", rows.Read(1).GetValueByName("sex")->GetString());
    EXPECT_EQ("crew", rows.Read(1).GetValueByName("class")->GetString());
    EXPECT_EQ(nullptr, rows.Read(3).GetValueByName("sex"));
    EXPECT_EQ(nullptr, rows.Read(0).GetValueByName("of no field"));
}

}  // namespace
}  // namespace nbscore::test
