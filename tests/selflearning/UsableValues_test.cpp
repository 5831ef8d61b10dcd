// Which values of a case count, to models of either kind.

#include <cmath>

#include "naivebayes/CountedEncoder.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "selflearning/EitherModel.h"

namespace {

using nbscore::test::ContinuousVariable;
using nbscore::test::CountedEncoder;
using nbscore::test::EitherModel;
using nbscore::test::NamedRecord;
using nbscore::test::NameOfKind;
using nbscore::test::NumberVariable;
using nbscore::test::priorNo;
using nbscore::test::priorYes;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

constexpr double t = nbscore::test::smallThreshold;

const NBayesInputBase::Matrix counts = {{1, 5}, {5, 1}};

/// The second category's probability when a value has the first of these rows, or the second.
double AfterRow(std::size_t row) {
    const double yes = priorYes * ((t + counts[row][0]) / (2 * t + 6));
    const double no = priorNo * ((t + counts[row][1]) / (2 * t + 6));
    return no / (yes + no);
}

NamedRecord Number(double x) {
    NamedRecord record;
    record.Set("x", std::make_unique<NumericValue>(x));
    return record;
}

class UsableValues : public ::testing::TestWithParam<bool> {
protected:
    EitherModel model{GetParam(), t, {3, 1}};
};

TEST_P(UsableValues, AreThoseOfCodeZero_AndNotOfMinusOne) {
    int deletions = 0;
    for (const int code : {0, -1}) {
        EitherModel other(GetParam(), t, {3, 1});
        other.AddPredictor(TextVariable("x", {}), new CountedEncoder(deletions, code), counts);
        EXPECT_EQ(other.Score(TextRecord({{"x", "any"}})), code == 0 ? AfterRow(0) : priorNo);
    }
}

TEST_P(UsableValues, AreNotMissingOnes_OnlyWhenTheVariableIsContinuous) {
    for (const bool isContinuous : {true, false}) {
        auto variable = isContinuous ? ContinuousVariable("x") : NumberVariable("x", {9, 1});
        variable->AddMissingValue(std::make_unique<NumericValue>(9));
        EitherModel other(GetParam(), t, {3, 1});
        other.AddPredictor(std::move(variable), new NBCatNumericEncoder(std::vector<double>{9, 1}), counts);
        EXPECT_EQ(other.Score(Number(9)), isContinuous ? priorNo : AfterRow(0));
        BaseCaseRecord record({"x"});
        record.SetNumber(0, 9);
        EXPECT_EQ(other.Score(record), isContinuous ? priorNo : AfterRow(0));
    }
}

TEST_P(UsableValues, AreNumbersThatAreNotSystemMissing_WhenTheVariableIsBinned) {
    model.AddPredictor(ContinuousVariable("x"), new NBinningEncoder(std::vector<double>{10}), counts);
    EXPECT_EQ(model.Score(Number(NumericValue::GetSysmisValue())), priorNo);
    EXPECT_EQ(model.Score(Number(11)), AfterRow(1));
    EXPECT_EQ(model.Score(TextRecord({{"x", "11"}})), priorNo);
}

TEST_P(UsableValues, GiveNaN_WhenTheSumIsZero) {
    EitherModel other(GetParam(), 0.5, {3, 1});
    // The count takes the pseudo-count away again: probability 0 for both categories.
    other.AddTextPredictor({"x", {"p", "q"}, {{-0.5, -0.5}, {3, 3}}});
    EXPECT_TRUE(std::isnan(other.Score(TextRecord({{"x", "p"}}))));
    EXPECT_FALSE(std::isnan(other.Score(TextRecord({{"x", "q"}}))));
}

using UsableValuesDeathTest = UsableValues;

TEST_P(UsableValuesDeathTest, StopTheProcess_WhenThereIsNoRecord) {
    ScoreResult* result = nullptr;
    EXPECT_DEATH(model.Get().GetScore(nullptr, result, false), "does not exist");
}

INSTANTIATE_TEST_SUITE_P(BothKinds, UsableValues, ::testing::Bool(), NameOfKind);
INSTANTIATE_TEST_SUITE_P(BothKinds, UsableValuesDeathTest, ::testing::Bool(), NameOfKind);

}  // namespace
