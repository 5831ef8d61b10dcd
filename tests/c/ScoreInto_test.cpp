// Scores through the C interface that are written into memory of the caller's.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "c/ArrowTable.h"
#include "c/Handles.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string titanic = NBSCORE_EXAMPLES "/titanic/titanic.pmml";
const std::string offers = NBSCORE_EXAMPLES "/offers/offers.pmml";

/// The answers of some cases, in memory that says whether it was written.
struct Room {
    Room(std::size_t cases, std::size_t columns)
        : predicted(cases, -7), confidence(cases, -7.0), probabilities(cases * columns, -7.0) {
        given.predicted = predicted.data();
        given.confidence = confidence.data();
        given.probabilities = probabilities.data();
        given.columns = columns;
    }

    std::string ScoreInto(const ModelHandle& model, ArrowTable& table, const nbscore_scoring* scoring = nullptr) {
        nbscore_error* failure = nullptr;
        nbscore_score_into(model.get(), scoring, &table.GetSchema(), &table.GetArray(), &given, &failure);
        const ErrorHandle error(failure);
        return error == nullptr ? "" : error->message;
    }

    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> probabilities;
    nbscore_room given = NBSCORE_ROOM_INIT;
};

void AddPeople(ArrowTable& table) {
    table.AddTexts<std::int32_t>("class", {"first", "third", "crew"});
    table.AddTexts<std::int32_t>("sex", {"female", std::nullopt, "male"});
    table.AddTexts<std::int32_t>("age", {"adult", "child", "adult"});
}

/// A column of the scores that nbscore_score gives.
std::vector<double> NumbersOf(const ModelHandle& model, ArrowTable& table, std::size_t column) {
    ArrowScores scores;
    EXPECT_EQ(NBSCORE_OK,
              nbscore_score(model.get(), nullptr, &table.GetSchema(), &table.GetArray(), &scores.array, nullptr));
    const auto* const numbers = static_cast<const double*>(scores.array.children[column]->buffers[1]);
    return {numbers, numbers + scores.array.length};
}

TEST(CScoresInto, AreThoseOfTheColumns_CaseByCaseAndColumnByColumn) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable people(3);
    AddPeople(people);
    Room byCases(3, 2);
    ASSERT_EQ("", byCases.ScoreInto(model, people));
    EXPECT_THAT(byCases.predicted, ElementsAre(1, 0, 0));
    EXPECT_EQ(NumbersOf(model, people, 1), byCases.confidence);
    Room byColumns(3, 2);
    byColumns.given.by_columns = 1;
    ASSERT_EQ("", byColumns.ScoreInto(model, people));
    for (std::size_t column = 0; column < 2; ++column) {
        const std::vector<double> expected = NumbersOf(model, people, 2 + column);
        for (std::size_t entry = 0; entry < 3; ++entry) {
            EXPECT_EQ(expected[entry], byCases.probabilities[entry * 2 + column]);
            EXPECT_EQ(expected[entry], byColumns.probabilities[column * 3 + entry]);
        }
    }
}

TEST(CScoresInto, AreOnlyThoseThatThereIsRoomFor) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable people(3);
    AddPeople(people);
    Room room(3, 2);
    room.given.predicted = nullptr;
    room.given.probabilities = nullptr;
    ASSERT_EQ("", room.ScoreInto(model, people));
    EXPECT_EQ(NumbersOf(model, people, 1), room.confidence);
    EXPECT_THAT(room.predicted, ElementsAre(-7, -7, -7));
}

TEST(CScoresInto, AreTheScoresOfASet_WhichPredictsNothing) {
    const ModelHandle model = OpenFile(offers);
    ArrowTable nobody(1);
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.lacking_as_absent = 1;
    Room room(1, 4);
    EXPECT_THAT(room.ScoreInto(model, nobody, &scoring), HasSubstr("predicts nothing"));
    room.given.predicted = nullptr;
    room.given.confidence = nullptr;
    ASSERT_EQ("", room.ScoreInto(model, nobody, &scoring));
    for (const double score : room.probabilities)
        EXPECT_GT(score, 0.0);
    EXPECT_THAT(room.ScoreInto(model, nobody), HasSubstr("The cases lack"));
}

TEST(CScoresInto, AreRefused_WhereTheRoomIsForAnotherNumberOfColumns) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable people(3);
    AddPeople(people);
    Room room(3, 3);
    EXPECT_EQ("columns is 3 instead of 2.", room.ScoreInto(model, people));
    room.given.columns = 2;
    room.given.by_columns = 2;
    EXPECT_THAT(room.ScoreInto(model, people), HasSubstr("by_columns is 2"));
    room.given.size = 0;
    EXPECT_THAT(room.ScoreInto(model, people), HasSubstr("size"));
}

TEST(CScoresInto, AreNaN_WhereACaseHasNoResult) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.rule = NBSCORE_RULE_STANDARD;
    const ModelHandle model = OpenFile(NBSCORE_CASES_DIR "/standard-cases-without-a-result/document.pmml", &reading);
    ArrowTable table(2);
    table.AddTexts<std::int32_t>("colour", {"red", "blue"});
    table.AddTexts<std::int32_t>("weight", {"2", "heavy"});
    table.AddTexts<std::int32_t>("stamp", {"old", std::nullopt});
    Room room(2, 2);
    ASSERT_EQ("", room.ScoreInto(model, table));
    EXPECT_GE(room.predicted[0], 0);
    EXPECT_EQ(-1, room.predicted[1]);
    EXPECT_FALSE(std::isnan(room.confidence[0]));
    EXPECT_TRUE(std::isnan(room.confidence[1]));
}

}  // namespace
}  // namespace nbscore::test
