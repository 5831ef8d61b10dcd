#include <map>
#include <new>

#include "selflearning/EitherModel.h"

namespace {

using nbscore::test::DisplayText;
using nbscore::test::EitherModel;
using nbscore::test::FailingRecord;
using nbscore::test::NameOfKind;
using nbscore::test::Score;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

EitherModel Weather(bool isSet) {
    EitherModel model(isSet, 0.5, {3, 1});
    model.AddTextPredictor({"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}});
    model.AddTextPredictor({"windy", {"true", "false"}, {{1, 4}, {2, 0}}});
    return model;
}

BaseCaseRecord RainyAndWindy() {
    BaseCaseRecord record({"id", "windy", "outlook"});
    record.SetText(0, "7");
    record.SetText(1, "true");
    record.SetText(2, "rain");
    return record;
}

std::map<std::string, int> Positions(const ScoreModel& model) {
    std::vector<ScoreDictVar*> vars;
    model.GetDictionary()->GetAllVars(vars);
    std::map<std::string, int> positions;
    for (const ScoreDictVar* var : vars)
        positions[var->GetName()] = var->GetIndex();
    return positions;
}

bool SaysNoted(const std::string& display) {
    return display.find("Dict var index set up? True\n") != std::string::npos;
}

using Expected = std::map<std::string, int>;

class RecordPositions : public ::testing::TestWithParam<bool> {
protected:
    /// What a model that has met no other case says of texts given by name.
    double ScoreByName(const std::map<std::string, std::string>& texts) const {
        return Weather(GetParam()).Score(TextRecord(texts));
    }

    const EitherModel model = Weather(GetParam());
};

TEST_P(RecordPositions, MakeNoDifferenceToTheScores) {
    EXPECT_FALSE(SaysNoted(model.Display()));
    EXPECT_EQ(model.Score(RainyAndWindy()), ScoreByName({{"outlook", "rain"}, {"windy", "true"}}));
    EXPECT_TRUE(SaysNoted(model.Display()));
    EXPECT_NE(model.Score(RainyAndWindy()), ScoreByName({}));
    EXPECT_EQ(Positions(model.Get()), (Expected{{"outlook", 2}, {"windy", 1}, {"play", -1}}));
}

TEST_P(RecordPositions, AreNotNoted_WhileRecordsAreNotIndexed) {
    model.Score(TextRecord({{"outlook", "sunny"}}));
    EXPECT_FALSE(SaysNoted(model.Display()));
    EXPECT_EQ(model.Score(RainyAndWindy()), ScoreByName({{"outlook", "rain"}, {"windy", "true"}}));
    EXPECT_TRUE(SaysNoted(model.Display()));
}

TEST_P(RecordPositions, AreNotedByTheNextCase_WhenNotingThemFails) {
    EXPECT_THROW(model.Score(FailingRecord({"windy", "outlook"})), std::bad_alloc);
    EXPECT_FALSE(SaysNoted(model.Display()));
    EXPECT_EQ(model.Score(RainyAndWindy()), ScoreByName({{"outlook", "rain"}, {"windy", "true"}}));
    EXPECT_TRUE(SaysNoted(model.Display()));
}

TEST_P(RecordPositions, StayThoseOfTheFirstIndexedRecord) {
    model.Score(BaseCaseRecord({"windy", "outlook"}));
    BaseCaseRecord swapped({"outlook", "windy"});
    swapped.SetText(0, "sunny");
    swapped.SetText(1, "true");
    // Each is looked up where the other one stands, and no value is known there.
    EXPECT_EQ(model.Score(swapped), ScoreByName({}));
    EXPECT_EQ(Positions(model.Get()), (Expected{{"outlook", 1}, {"windy", 0}, {"play", -1}}));
}

TEST_P(RecordPositions, AreNone_WhereTheRecordDoesNotKnowAPredictor) {
    BaseCaseRecord record({"outlook"});
    record.SetText(0, "rain");
    EXPECT_EQ(model.Score(record), ScoreByName({{"outlook", "rain"}}));
    EXPECT_EQ(Positions(model.Get()), (Expected{{"outlook", 0}, {"windy", -1}, {"play", -1}}));
}

INSTANTIATE_TEST_SUITE_P(BothKinds, RecordPositions, ::testing::Bool(), NameOfKind);

using RecordPositionsOfASet = RecordPositions;

TEST_P(RecordPositionsOfASet, AreNotedForEveryNamedField) {
    // A field that no sub-model uses, one that no dictionary knows, and one that is not in the record.
    model.GetSet().SetPredictorVarNames({"outlook", "play", "unheard of", "windy"});
    model.Score(BaseCaseRecord({"id", "play", "outlook", "unheard of"}));
    EXPECT_EQ(Positions(model.Get()), (Expected{{"outlook", 2}, {"windy", -1}, {"play", 1}}));
}

TEST_P(RecordPositionsOfASet, AreNotNotedForFieldsThatAreNotNamed) {
    model.GetSet().SetPredictorVarNames({"windy"});
    EXPECT_EQ(model.Score(RainyAndWindy()), ScoreByName({{"windy", "true"}}));
    EXPECT_EQ(Positions(model.Get()), (Expected{{"outlook", -1}, {"windy", 1}, {"play", -1}}));
}

INSTANTIATE_TEST_SUITE_P(Sets, RecordPositionsOfASet, ::testing::Values(true), NameOfKind);

TEST(RecordPositionsWithoutDictionary, AreSetUp) {
    const auto target = TextVariable("play", {"yes"});
    NaiveBayesModel single;
    single.SetThreshold(1);
    single.SetTargetVar(target.get());
    single.SetTargetCounts({1});
    EXPECT_EQ(Score(single, BaseCaseRecord({"a"})).prediction, "yes");
    EXPECT_TRUE(SaysNoted(DisplayText(single)));
    SelfLearningModel set;
    set.SetPredictorVarNames({"x"});
    EXPECT_TRUE(Scores(set, BaseCaseRecord({"x"})).empty());
    EXPECT_TRUE(SaysNoted(DisplayText(set)));
}

}  // namespace
