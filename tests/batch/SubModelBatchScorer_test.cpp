#include "batch/SubModelBatchScorer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "selflearning/SetParts.h"

namespace nbscore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

/// Offers of which one reads nothing and has a prior of zero.
std::unique_ptr<SelfLearningModel> Offers() {
    const test::PredictorPart age{"age", {"young", "old"}, {{1, 3}, {4, 2}}};
    const test::PredictorPart town{"town", {"coast"}, {{2, 2}}};
    return test::MakeSet(
        test::TextVariable("answer", {"no", "yes"}),
        {{"card", 0.5, {5, 3}, {age, town}}, {"loan", -2.0, {2, 6}, {}}, {"phone", 0.5, {4, 4}, {town}}});
}

class SubModelBatchScorerTest : public testing::Test {
protected:
    const SubModelBatchScorer scorer{*Offers()};
    const std::vector<std::string_view> ages = {"young", "unheard of"};
    const std::vector<Column> columns = {TextViewColumn{ages, {}}, AbsentColumn{}};
    std::vector<double> scores = std::vector<double>(6, -7.0);
};

TEST_F(SubModelBatchScorerTest, TellsItsInputsAndSubModels) {
    ASSERT_EQ(scorer.GetInputs().size(), 2u);
    EXPECT_EQ(scorer.GetInputs()[0].name, "age");
    EXPECT_EQ(scorer.GetInputs()[1].name, "town");
    EXPECT_THAT(scorer.GetSubModels(), ElementsAre("card", "loan", "phone"));
    EXPECT_EQ(scorer.GetNumPredictors(), 3u);
}

TEST_F(SubModelBatchScorerTest, ScoresByHand_InBothOrders) {
    const double no = ((0.5 + 5) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 1) / (2 * 0.5 + 5));
    const double yes = ((0.5 + 3) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 3) / (2 * 0.5 + 5));
    const double young = yes / (no + yes);
    const double cardPrior = (0.5 + 3) / (2 * 0.5 + 1 / 0.5);
    const double phonePrior = (0.5 + 4) / (2 * 0.5 + 1 / 0.5);
    const double loanPrior = (-2.0 + 6) / (2 * -2.0 + 1 / -2.0);
    SubModelColumns answers;
    answers.scores = scores;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(scores, ElementsAre(young, loanPrior, phonePrior, cardPrior, loanPrior, phonePrior));
    answers.scoreOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(scores, ElementsAre(young, cardPrior, loanPrior, loanPrior, phonePrior, phonePrior));
}

TEST_F(SubModelBatchScorerTest, CountsForEachPredictorOfEachSubModel) {
    std::vector<std::uint64_t> missing = {1, 1, 1};
    std::vector<std::uint64_t> unknown = {1, 1, 1};
    SubModelColumns answers;
    answers.missing = missing;
    answers.unknown = unknown;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(missing, ElementsAre(1, 3, 3));
    EXPECT_THAT(unknown, ElementsAre(2, 1, 1));
}

TEST_F(SubModelBatchScorerTest, RefusesWhatDoesNotFit) {
    SubModelColumns answers;
    std::vector<double> five(5);
    answers.scores = five;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    std::vector<std::uint64_t> two(2);
    answers = {};
    answers.missing = two;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    answers = {};
    answers.unknown = two;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    EXPECT_THROW(scorer.Score({}, 2, {}), std::invalid_argument);
    EXPECT_THROW(scorer.MakeDictionary(2, std::vector<double>{1.0}), std::out_of_range);
    EXPECT_THROW(scorer.RowOf(scorer.GetInputsOfReaders().size(), 1.0), std::out_of_range);
}

TEST(SubModelBatchScorer, RefusesDictionariesOfAScorerThatIsGone_WhereverItsSuccessorsStand) {
    const auto set = Offers();
    const std::vector<std::string_view> words = {"young", "old"};
    const std::vector<std::int16_t> codes = {0, 1};
    std::optional<SubModelBatchScorer> gone(*set);
    const InputDictionary dictionary = gone->MakeDictionary(0, words);
    const std::vector<Column> coded = {CodeColumn<std::int16_t>{codes, &dictionary, {}}, AbsentColumn{}};
    EXPECT_NO_THROW(gone->Score(coded, 2, {}));
    gone.reset();
    // Each has the memory that the one before gave back.
    for (int number = 0; number < 100; ++number)
        EXPECT_THROW(SubModelBatchScorer(*set).Score(coded, 2, {}), std::invalid_argument);
}

TEST_F(SubModelBatchScorerTest, ScoresNoCases) {
    const std::vector<Column> none(2);
    EXPECT_NO_THROW(scorer.Score(none, 0, {}));
}

TEST(SubModelBatchScorer, RefusesASingleClassifier) {
    const auto model = test::MakeModel(0.5, test::TextVariable("play", {"yes", "no"}), {5, 3}, {});
    EXPECT_THAT([&] { SubModelBatchScorer scorer(*model); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("single classifier")));
}

TEST(SubModelBatchScorer, HasNoScores_WithoutSubModels) {
    const auto set = test::MakeSet(test::TextVariable("answer", {"no", "yes"}), {});
    const SubModelBatchScorer scorer(*set);
    EXPECT_TRUE(scorer.GetSubModels().empty());
    std::vector<double> one(1);
    SubModelColumns answers;
    EXPECT_NO_THROW(scorer.Score({}, 5, answers));
    answers.scores = one;
    EXPECT_THROW(scorer.Score({}, 5, answers), std::invalid_argument);
}

}  // namespace
}  // namespace nbscore
