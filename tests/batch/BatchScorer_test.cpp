#include "batch/BatchScorer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>

#include "naivebayes/ModelParts.h"
#include "naivebayes/NBinningEncoder.h"
#include "naivebayes/ScoredCase.h"
#include "selflearning/SetParts.h"

namespace nbscore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::unique_ptr<NaiveBayesModel> Weather() {
    return test::MakeModel(0.5, test::TextVariable("play", {"yes", "no"}), {5, 3},
                           {{"outlook", {"sunny", "rain"}, {{3, 1}, {2, 2}}}, {"wind", {"weak"}, {{5, 3}}}});
}

/// The columns of two sunny cases without wind.
class BatchScorerTest : public testing::Test {
protected:
    const BatchScorer scorer{*Weather()};
    const std::vector<std::string_view> outlooks = {"sunny", "sunny"};
    const std::vector<Column> columns = {TextViewColumn{outlooks, {}}, AbsentColumn{}};
    std::vector<std::int32_t> predicted = {-7, -7};
    std::vector<double> confidence = {-7, -7};
    std::vector<double> probabilities = {-7, -7, -7, -7};
};

TEST_F(BatchScorerTest, TellsItsInputsAndCategories) {
    ASSERT_EQ(scorer.GetInputs().size(), 2u);
    EXPECT_EQ(scorer.GetInputs()[0].name, "outlook");
    EXPECT_EQ(scorer.GetInputs()[1].name, "wind");
    EXPECT_EQ(scorer.GetInputs()[1].kind, PredictorTables::Texts);
    EXPECT_THAT(scorer.GetInputsOfPredictors(), ElementsAre(0u, 1u));
    EXPECT_THAT(scorer.GetCategories(), ElementsAre("yes", "no"));
}

TEST_F(BatchScorerTest, ScoresByHand) {
    ClassificationColumns answers;
    answers.predicted = predicted;
    answers.confidence = confidence;
    answers.probabilities = probabilities;
    scorer.Score(columns, 2, answers);
    const double yes = ((0.5 + 5) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 3) / (2 * 0.5 + 5));
    const double no = ((0.5 + 3) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 1) / (2 * 0.5 + 3));
    EXPECT_THAT(predicted, ElementsAre(0, 0));
    EXPECT_THAT(probabilities, ElementsAre(yes / (yes + no), no / (yes + no), yes / (yes + no), no / (yes + no)));
    EXPECT_THAT(confidence, ElementsAre(yes / (yes + no), yes / (yes + no)));
}

TEST_F(BatchScorerTest, WritesOnlyWhatIsAskedFor) {
    scorer.Score(columns, 2, {});
    ClassificationColumns answers;
    answers.confidence = confidence;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(predicted, ElementsAre(-7, -7));
    EXPECT_GT(confidence[1], 0.0);
}

TEST_F(BatchScorerTest, AddsToItsCounters) {
    std::vector<std::uint64_t> missing = {10, 20};
    std::vector<std::uint64_t> unknown = {30, 40};
    const std::vector<std::string_view> snow = {"snow", "rain"};
    const std::vector<Column> withSnow = {TextViewColumn{snow, {}}, AbsentColumn{}};
    ClassificationColumns answers;
    answers.missing = missing;
    answers.unknown = unknown;
    scorer.Score(withSnow, 2, answers);
    EXPECT_THAT(missing, ElementsAre(10, 22));
    EXPECT_THAT(unknown, ElementsAre(31, 40));
}

TEST_F(BatchScorerTest, ScoresNoCases) {
    const std::vector<Column> none = {AbsentColumn{}, AbsentColumn{}};
    EXPECT_NO_THROW(scorer.Score(none, 0, {}));
}

TEST_F(BatchScorerTest, RefusesAnswersAndColumnsThatDoNotFit) {
    const std::vector<Column> one = {AbsentColumn{}};
    EXPECT_THROW(scorer.Score(one, 2, {}), std::invalid_argument);
    EXPECT_THROW(scorer.Score(columns, 3, {}), std::invalid_argument);
    ClassificationColumns answers;
    answers.probabilities = confidence;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    std::vector<std::uint64_t> one64(1);
    answers = {};
    answers.missing = one64;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    answers = {};
    answers.unknown = one64;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
}

TEST_F(BatchScorerTest, TakesDictionariesOfItsCopies_AndOfNoOther) {
    const std::vector<std::string_view> words = {"rain", "snow"};
    const std::vector<std::int16_t> codes = {0, 1};
    const InputDictionary own = BatchScorer(scorer).MakeDictionary(0, words);
    const InputDictionary foreign = BatchScorer(*Weather()).MakeDictionary(0, words);
    EXPECT_EQ(own.GetSize(), 2u);
    const auto score = [&](const InputDictionary& dictionary) {
        const std::vector<Column> coded = {CodeColumn<std::int16_t>{codes, &dictionary, {}}, AbsentColumn{}};
        scorer.Score(coded, 2, {});
    };
    EXPECT_NO_THROW(score(own));
    EXPECT_THROW(score(foreign), std::invalid_argument);
    EXPECT_THROW(scorer.MakeDictionary(2, words), std::out_of_range);
}

TEST(BatchScorer, RefusesDictionariesOfAScorerThatIsGone_WhereverItsSuccessorsStand) {
    const auto model = Weather();
    const std::vector<std::string_view> words = {"rain", "snow"};
    const std::vector<std::int16_t> codes = {0, 1};
    std::optional<BatchScorer> gone(*model);
    const InputDictionary dictionary = gone->MakeDictionary(0, words);
    gone.reset();
    const std::vector<Column> coded = {CodeColumn<std::int16_t>{codes, &dictionary, {}}, AbsentColumn{}};
    // Each has the memory that the one before gave back.
    for (int number = 0; number < 100; ++number)
        EXPECT_THROW(BatchScorer(*model).Score(coded, 2, {}), std::invalid_argument);
}

TEST_F(BatchScorerTest, RefusesReadersAndRowsThatThereAreNot) {
    EXPECT_EQ(scorer.RowOf(0, "rain"), 3u);
    EXPECT_THROW(scorer.RowOf(2, "rain"), std::out_of_range);
    const std::vector<RowNumber> known = {3};
    const std::vector<RowNumber> unknown = {4};
    EXPECT_THROW(scorer.ScoreRows(std::vector<std::span<const RowNumber>>{unknown, known}, 1, {}), std::out_of_range);
    EXPECT_THROW(scorer.ScoreRows(std::vector<std::span<const RowNumber>>{known}, 1, {}), std::invalid_argument);
}

TEST(BatchScorer, RefusesASet) {
    const auto set = test::MakeSet(test::TextVariable("answer", {"no", "yes"}), {});
    EXPECT_THAT([&] { BatchScorer scorer(*set); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("set of sub-models")));
}

TEST(BatchScorer, RefusesAModelThatCannotScoreEveryCase) {
    const NaiveBayesModel empty;
    EXPECT_THAT([&] { BatchScorer scorer(empty); }, ThrowsMessage<std::invalid_argument>(empty.FindScoringObstacle()));
}

/// A variable with a rule of its own: no number is missing, not even the one that others call so.
class VariableWithoutMissingNumbers : public BaseDictVar {
public:
    VariableWithoutMissingNumbers() : BaseDictVar("age", NumericStorage, Continuous) {}
    ScoreDictVar* Clone() const override { return new VariableWithoutMissingNumbers(); }
    bool IsMissingValue(const ScoreValue*) const override { return false; }
};

TEST(BatchScorer, AnswersAsTheModelDoes_WhenAVariableDoesNotCallTheSystemMissingNumberMissing) {
    const VariableWithoutMissingNumbers age;
    const auto target = test::TextVariable("answer", {"no", "yes"});
    NaiveBayesModel model;
    model.SetThreshold(0.5);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({3, 3});
    model.AddPredictorVar("age", &age);
    model.AddEncoder(new NBinningEncoder(std::vector<double>{30.0}));
    model.SetPredCounts(0, {{3, 1}, {0, 2}});
    const std::vector<double> ages = {NumericValue::GetSysmisValue()};
    std::vector<double> probabilities(2);
    ClassificationColumns answers;
    answers.probabilities = probabilities;
    BatchScorer(model).Score(std::vector<Column>{NumberColumn{ages, {}}}, 1, answers);
    test::NamedRecord record;
    record.Set("age", std::make_unique<NumericValue>(ages.front()));
    EXPECT_EQ(probabilities, test::Score(model, record).probabilities);
    EXPECT_NE(probabilities, test::Score(model, test::NamedRecord()).probabilities);
}

/// A text encoder with a rule of its own.
class LowerCaseEncoder : public NBCatStringEncoder {
public:
    using NBCatStringEncoder::NBCatStringEncoder;
    int GetCategory(const ScoreValue*) const override { return 0; }
};

TEST(BatchScorer, RefusesAnEncoderThatItDoesNotKnow) {
    const auto colour = test::TextVariable("colour", {});
    const auto target = test::TextVariable("answer", {"no", "yes"});
    NaiveBayesModel model;
    model.SetThreshold(0.5);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 1});
    model.AddPredictorVar("colour", colour.get());
    model.AddEncoder(new LowerCaseEncoder(std::vector<std::string>{"red"}));
    model.SetPredCounts(0, {{1, 1}});
    EXPECT_THAT([&] { BatchScorer scorer(model); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("\"colour\" has an encoder of an unknown class")));
}

}  // namespace
}  // namespace nbscore
