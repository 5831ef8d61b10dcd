// What a set of sub-models says of a case, worked out by hand.

#include <gtest/gtest.h>

#include "naivebayes/CountedEncoder.h"
#include "selflearning/SetParts.h"

namespace {

using nbscore::test::CountedEncoder;
using nbscore::test::Describe;
using nbscore::test::Descriptor;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

std::unique_ptr<BaseDictVar> Play() {
    return TextVariable("play", {"yes", "no"});
}

constexpr double t = 0.001;
constexpr double u = 2;

/// Two sub-models with thresholds of their own, of which the second reads one predictor more.
std::unique_ptr<SelfLearningModel> Weather() {
    return MakeSet(
        Play(),
        {{"small", t, {3, 1}, {{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 0}}}}},
         {"large",
          u,
          {30, 70},
          {{"outlook", {"sunny", "rain"}, {{10, 40}, {20, 30}}}, {"windy", {"true", "false"}, {{5, 7}, {25, 0}}}}}});
}

const double smallYes = (t + 3) / (2 * t + 1 / t);
const double smallNo = (t + 1) / (2 * t + 1 / t);
const double largeYes = (u + 30) / (2 * u + 1 / u);
const double largeNo = (u + 70) / (2 * u + 1 / u);

TEST(SelfLearningScoring, GivesEverySubModelsProbabilityOfTheSecondCategory) {
    const double sunnySmallYes = smallYes * ((t + 1) / (2 * t + 3));
    const double sunnySmallNo = smallNo * ((t + 1) / (2 * t + 1));
    const double rainLargeYes = largeYes * ((u + 20) / (2 * u + 30)) * ((u + 25) / (2 * u + 30));
    const double rainLargeNo = largeNo * ((u + 30) / (2 * u + 70)) * ((u + 0) / (2 * u + 7));
    const double sunnyLargeYes = largeYes * ((u + 10) / (2 * u + 30)) * ((u + 5) / (2 * u + 30));
    const double sunnyLargeNo = largeNo * ((u + 40) / (2 * u + 70)) * ((u + 7) / (2 * u + 7));
    const double rainSmallYes = smallYes * ((t + 2) / (2 * t + 3));
    const double rainSmallNo = smallNo * ((t + 0) / (2 * t + 1));
    const auto set = Weather();
    EXPECT_EQ(Scores(*set, TextRecord({{"outlook", "sunny"}, {"windy", "true"}})),
              (std::vector<double>{sunnySmallNo / (sunnySmallYes + sunnySmallNo),
                                   sunnyLargeNo / (sunnyLargeYes + sunnyLargeNo)}));
    EXPECT_EQ(
        Scores(*set, TextRecord({{"outlook", "rain"}, {"windy", "false"}})),
        (std::vector<double>{rainSmallNo / (rainSmallYes + rainSmallNo), rainLargeNo / (rainLargeYes + rainLargeNo)}));
}

TEST(SelfLearningScoring, DescribesSubModelsInTheirOrder) {
    const auto set = Weather();
    set->SetAssessmentMeanValues(1, 0.5);
    set->SetAssessmentStdDevValues(1, 500);
    const std::vector<Descriptor> described = Describe(*set, NamedRecord());
    ASSERT_EQ(described.size(), 2u);
    EXPECT_EQ(described[0].modelName, "small");
    EXPECT_EQ(described[0].assessmentMean, NumericValue::GetSysmisValue());
    EXPECT_EQ(described[0].assessmentStdDev, NumericValue::GetSysmisValue());
    EXPECT_EQ(described[1].modelName, "large");
    EXPECT_EQ(described[1].assessmentMean, 0.5);
    EXPECT_EQ(described[1].assessmentStdDev, 500);
}

TEST(SelfLearningScoring, UsesTheDeliberateDenominatorOfThePriors) {
    const auto set = MakeSet(Play(), {{"a", 0.001, {300, 700}, {}}});
    EXPECT_EQ(Scores(*set, NamedRecord()), std::vector<double>{700.001 / 1000.002});
}

TEST(SelfLearningScoring, AnswersThePriorAsItStands_WhenASubModelHasNoUsablePredictor) {
    const auto set = Weather();
    const std::vector<double> priors{smallNo, largeNo};
    EXPECT_EQ(Scores(*set, NamedRecord()), priors);
    EXPECT_EQ(Scores(*set, TextRecord({{"outlook", "hail"}, {"windy", "perhaps"}})), priors);
    // Windy is known to the second sub-model alone.
    const double yes = largeYes * ((u + 5) / (2 * u + 30));
    const double no = largeNo * ((u + 7) / (2 * u + 7));
    EXPECT_EQ(Scores(*set, TextRecord({{"windy", "true"}})), (std::vector<double>{smallNo, no / (yes + no)}));
}

TEST(SelfLearningScoring, ScoresAsEver_WhenACategoryWasNeverCounted) {
    const auto set = MakeSet(Play(), {{"a", t, {0, 5}, {{"x", {"p"}, {{0, 5}}}}}});
    const double yes = (t + 0) / (2 * t + 1 / t) * ((t + 0) / (t + 0));
    const double no = (t + 5) / (2 * t + 1 / t) * ((t + 5) / (t + 5));
    EXPECT_EQ(Scores(*set, TextRecord({{"x", "p"}})), std::vector<double>{no / (yes + no)});
}

/// A record that counts how often it is asked for a value, and answers the same text for all.
class AskedRecord : public ScoreCaseRecord {
public:
    explicit AskedRecord(bool answersByPosition) : indexed(answersByPosition) {}
    const ScoreValue* GetValueByIndex(int) const override { return Answer(); }
    const ScoreValue* GetValueByName(const std::string&) const override { return Answer(); }
    bool IsIndexed() const override { return indexed; }
    int GetVarIndex(const std::string&) const override { return 0; }

    mutable int asked = 0;

private:
    const ScoreValue* Answer() const {
        ++asked;
        return &value;
    }

    bool indexed;
    StringValue value{"p"};
};

TEST(SelfLearningScoring, AnswersThePriorWithoutReadingTheRecord_WhenAPriorIsZero) {
    struct ZeroPrior {
        double threshold;
        std::vector<double> counts;
        double score;
    };
    for (const ZeroPrior& zero :
         {ZeroPrior{0, {3, 4}, 0}, ZeroPrior{0.5, {-0.5, 4}, 4.5 / 3}, ZeroPrior{0.5, {4, -0.5}, 0}}) {
        const auto set = MakeSet(Play(), {{"zero", zero.threshold, zero.counts, {{"x", {"p"}, {{1, 5}}}}}});
        for (const bool indexed : {false, true}) {
            const AskedRecord record(indexed);
            EXPECT_EQ(Scores(*set, record), std::vector<double>{zero.score});
            EXPECT_EQ(record.asked, 0);
        }
    }
}

TEST(SelfLearningScoring, ReadsTheRecordOncePerPredictor_WhenNoPriorIsZero) {
    const auto set = MakeSet(Play(), {{"zero", 0, {1, 1}, {{"x", {"p"}, {{1, 5}}}}},
                                      {"a", t, {1, 1}, {{"x", {"p"}, {{1, 5}}}, {"y", {"p"}, {{1, 5}}}}}});
    for (const bool indexed : {false, true}) {
        const AskedRecord record(indexed);
        Scores(*set, record);
        EXPECT_EQ(record.asked, 2);
    }
}

TEST(SelfLearningScoring, ScoresASubModelAlone_WithoutReadingWhatTheOthersNeed) {
    const auto scores = Scores(*Weather(), TextRecord({{"outlook", "rain"}, {"windy", "true"}}));
    const auto set = Weather();
    const NamedRecord record = TextRecord({{"outlook", "rain"}, {"windy", "true"}});
    EXPECT_EQ(set->ScoreSubModel(&record, 1, false), scores[1]);
    EXPECT_EQ(set->ScoreSubModel(&record, 0, false), scores[0]);
    for (const int subModel : {0, 1}) {
        const AskedRecord counted(false);
        set->ScoreSubModel(&counted, subModel, false);
        EXPECT_EQ(counted.asked, 1 + subModel);
    }
}

TEST(SelfLearningScoringDeathTest, StopsTheProcess_WhenThereIsNoSuchSubModel) {
    const auto set = Weather();
    const NamedRecord record;
    EXPECT_DEATH(set->ScoreSubModel(&record, 2, false), "");
    EXPECT_DEATH(set->ScoreSubModel(&record, -1, false), "");
}

TEST(SelfLearningScoring, SumsOverEveryDeclaredValue_WhenThereAreMoreThanTwo) {
    const auto set =
        MakeSet(TextVariable("play", {"yes", "no", "perhaps"}), {{"a", 1, {1, 2, 3}, {{"x", {"p"}, {{1, 2, 3}}}}}});
    const double yes = 2.0 / 4 * (2.0 / 2), no = 3.0 / 4 * (3.0 / 3), perhaps = 4.0 / 4 * (4.0 / 4);
    EXPECT_EQ(Scores(*set, TextRecord({{"x", "p"}})), std::vector<double>{no / (yes + no + perhaps)});
}

TEST(SelfLearningScoring, KeepsTheFirstCasesPriors_WhenCountsComeLater) {
    const auto set = Weather();
    const std::vector<double> before = Scores(*set, NamedRecord());
    set->SetThreshold(1);
    set->SetTargetCounts({100, 1});
    EXPECT_EQ(Scores(*set, NamedRecord()), before);
    EXPECT_EQ(Scores(*set, TextRecord({{"outlook", "rain"}})), Scores(*Weather(), TextRecord({{"outlook", "rain"}})));
}

TEST(SelfLearningScoring, DoesTheSame_WhetherOrNotOnlyThePredictionIsWanted) {
    const auto set = Weather();
    const std::vector<double> scores = Scores(*set, TextRecord({{"outlook", "rain"}}));
    set->SetPredictionOnly(true);
    EXPECT_EQ(Scores(*set, TextRecord({{"outlook", "rain"}})), scores);
}

TEST(SelfLearningScoring, GivesAnEmptyList_WhenThereIsNoSubModel) {
    SelfLearningModel set;
    EXPECT_TRUE(Describe(set, NamedRecord()).empty());
    EXPECT_TRUE(Describe(set, BaseCaseRecord({"x"})).empty());
}

}  // namespace
