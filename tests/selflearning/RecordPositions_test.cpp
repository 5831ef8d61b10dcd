#include <gtest/gtest.h>

#include <map>
#include <new>

#include "selflearning/SetParts.h"

namespace {

using nbscore::test::DisplayText;
using nbscore::test::FailingRecord;
using nbscore::test::MakeSet;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

/// Two sub-models of one predictor each.
std::unique_ptr<SelfLearningModel> Weather() {
    return MakeSet(TextVariable("play", {"yes", "no"}),
                   {{"a", 0.5, {3, 1}, {{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}}}},
                    {"b", 0.5, {3, 1}, {{"windy", {"true", "false"}, {{1, 4}, {2, 0}}}}}});
}

std::map<std::string, int> Positions(const SelfLearningModel& set) {
    std::vector<ScoreDictVar*> vars;
    set.GetDictionary()->GetAllVars(vars);
    std::map<std::string, int> positions;
    for (const ScoreDictVar* var : vars)
        positions[var->GetName()] = var->GetIndex();
    return positions;
}

bool AreNoted(const SelfLearningModel& set) {
    return DisplayText(set).find("Dict var index set up? True\n") != std::string::npos;
}

using Expected = std::map<std::string, int>;

TEST(SelfLearningPositions, AreNotedForEveryNamedField_WhenTheFirstRecordIsIndexed) {
    const auto set = Weather();
    // A field that no sub-model uses, one that no dictionary knows, and one that is not in the record.
    set->SetPredictorVarNames({"outlook", "play", "unheard of", "windy"});
    EXPECT_FALSE(AreNoted(*set));
    Scores(*set, BaseCaseRecord({"id", "play", "outlook", "unheard of"}));
    EXPECT_TRUE(AreNoted(*set));
    EXPECT_EQ(Positions(*set), (Expected{{"outlook", 2}, {"windy", -1}, {"play", 1}}));
}

TEST(SelfLearningPositions, AreNotNotedForFieldsThatAreNotNamed) {
    const auto set = Weather();
    set->SetPredictorVarNames({"windy"});
    BaseCaseRecord record({"outlook", "windy"});
    record.SetText(0, "sunny");
    record.SetText(1, "true");
    const std::vector<double> scores = Scores(*set, record);
    EXPECT_EQ(Positions(*set), (Expected{{"outlook", -1}, {"windy", 1}, {"play", -1}}));
    EXPECT_EQ(scores, Scores(*Weather(), TextRecord({{"windy", "true"}})));
}

TEST(SelfLearningPositions, AreNotNoted_WhileRecordsAreNotIndexed) {
    const auto set = Weather();
    Scores(*set, TextRecord({{"outlook", "sunny"}}));
    EXPECT_FALSE(AreNoted(*set));
    Scores(*set, BaseCaseRecord({"windy"}));
    EXPECT_TRUE(AreNoted(*set));
    EXPECT_EQ(Positions(*set), (Expected{{"outlook", -1}, {"windy", 0}, {"play", -1}}));
}

TEST(SelfLearningPositions, AreNotedByTheNextCase_WhenNotingThemFails) {
    const auto set = Weather();
    EXPECT_THROW(Scores(*set, FailingRecord({"windy", "outlook"})), std::bad_alloc);
    EXPECT_FALSE(AreNoted(*set));
    BaseCaseRecord record({"id", "windy", "outlook"});
    record.SetText(1, "true");
    record.SetText(2, "rain");
    EXPECT_EQ(Scores(*set, record), Scores(*Weather(), TextRecord({{"outlook", "rain"}, {"windy", "true"}})));
    EXPECT_TRUE(AreNoted(*set));
}

TEST(SelfLearningPositions, StayThoseOfTheFirstIndexedRecord) {
    const auto set = Weather();
    Scores(*set, BaseCaseRecord({"windy", "outlook"}));
    BaseCaseRecord swapped({"outlook", "windy"});
    swapped.SetText(0, "sunny");
    swapped.SetText(1, "true");
    // Each is looked up where the other one stands, and no value is known there.
    EXPECT_EQ(Scores(*set, swapped), Scores(*Weather(), TextRecord({})));
    EXPECT_EQ(Positions(*set), (Expected{{"outlook", 1}, {"windy", 0}, {"play", -1}}));
}

TEST(SelfLearningPositions, MakeNoDifferenceToTheScores) {
    const auto set = Weather();
    BaseCaseRecord record({"windy", "id", "outlook"});
    record.SetText(0, "true");
    record.SetText(2, "rain");
    EXPECT_EQ(Scores(*set, record), Scores(*Weather(), TextRecord({{"outlook", "rain"}, {"windy", "true"}})));
}

TEST(SelfLearningPositions, AreSetUp_WhenThereIsNoDictionary) {
    SelfLearningModel set;
    set.SetPredictorVarNames({"x"});
    EXPECT_TRUE(Scores(set, BaseCaseRecord({"x"})).empty());
    EXPECT_TRUE(AreNoted(set));
}

}  // namespace
