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

/// Offers of which one reads nothing and has a prior of zero.
std::unique_ptr<SelfLearningModel> Offers() {
    const test::PredictorPart age{"age", {"young", "old"}, {{1, 3}, {4, 2}}};
    const test::PredictorPart town{"town", {"coast"}, {{2, 2}}};
    return test::MakeSet(
        test::TextVariable("answer", {"no", "yes"}),
        {{"card", 0.5, {5, 3}, {age, town}}, {"loan", -2.0, {2, 6}, {}}, {"phone", 0.5, {4, 4}, {town}}});
}

/// The columns of two sunny cases without wind.
class ScorerOfOne : public testing::Test {
protected:
    const BatchScorer scorer{*Weather()};
    const std::vector<std::string_view> outlooks = {"sunny", "sunny"};
    const std::vector<Column> columns = {TextViewColumn{outlooks, {}}, AbsentColumn{}};
    std::vector<std::int32_t> predicted = {-7, -7};
    std::vector<double> confidence = {-7, -7};
    std::vector<double> probabilities = {-7, -7, -7, -7};
};

TEST_F(ScorerOfOne, TellsItsInputsAndCategories) {
    EXPECT_FALSE(scorer.IsSet());
    ASSERT_EQ(scorer.GetInputs().size(), 2u);
    EXPECT_EQ(scorer.GetInputs()[0].name, "outlook");
    EXPECT_EQ(scorer.GetInputs()[1].name, "wind");
    EXPECT_EQ(scorer.GetInputs()[1].kind, PredictorTables::Texts);
    EXPECT_THAT(scorer.GetInputsOfPredictors(), ElementsAre(0u, 1u));
    EXPECT_THAT(scorer.GetCategories(), ElementsAre("yes", "no"));
    EXPECT_THAT(scorer.GetSubModels(), ElementsAre());
}

TEST_F(ScorerOfOne, ScoresByHand) {
    AnswerColumns answers;
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

TEST_F(ScorerOfOne, WritesOnlyWhatIsAskedFor) {
    scorer.Score(columns, 2, {});
    AnswerColumns answers;
    answers.confidence = confidence;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(predicted, ElementsAre(-7, -7));
    EXPECT_GT(confidence[1], 0.0);
}

TEST_F(ScorerOfOne, AddsToItsCounters) {
    std::vector<std::uint64_t> missing = {10, 20};
    std::vector<std::uint64_t> unknown = {30, 40};
    const std::vector<std::string_view> snow = {"snow", "rain"};
    const std::vector<Column> withSnow = {TextViewColumn{snow, {}}, AbsentColumn{}};
    AnswerColumns answers;
    answers.missing = missing;
    answers.unknown = unknown;
    scorer.Score(withSnow, 2, answers);
    EXPECT_THAT(missing, ElementsAre(10, 22));
    EXPECT_THAT(unknown, ElementsAre(31, 40));
}

/// The columns of two cases of which one says something to one of the offers.
class ScorerOfASet : public testing::Test {
protected:
    const BatchScorer scorer{*Offers()};
    const std::vector<std::string_view> ages = {"young", "unheard of"};
    const std::vector<Column> columns = {TextViewColumn{ages, {}}, AbsentColumn{}};
    std::vector<double> scores = std::vector<double>(6, -7.0);
};

TEST_F(ScorerOfASet, TellsItsInputsAndSubModels) {
    EXPECT_TRUE(scorer.IsSet());
    ASSERT_EQ(scorer.GetInputs().size(), 2u);
    EXPECT_EQ(scorer.GetInputs()[0].name, "age");
    EXPECT_EQ(scorer.GetInputs()[1].name, "town");
    EXPECT_THAT(scorer.GetSubModels(), ElementsAre("card", "loan", "phone"));
    EXPECT_THAT(scorer.GetInputsOfPredictors(), ElementsAre(0u, 1u, 1u));
    EXPECT_THAT(scorer.GetCategories(), ElementsAre());
}

TEST_F(ScorerOfASet, ScoresByHand_InBothOrders) {
    const double no = ((0.5 + 5) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 1) / (2 * 0.5 + 5));
    const double yes = ((0.5 + 3) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 3) / (2 * 0.5 + 5));
    const double young = yes / (no + yes);
    const double cardPrior = (0.5 + 3) / (2 * 0.5 + 1 / 0.5);
    const double phonePrior = (0.5 + 4) / (2 * 0.5 + 1 / 0.5);
    const double loanPrior = (-2.0 + 6) / (2 * -2.0 + 1 / -2.0);
    AnswerColumns answers;
    answers.probabilities = scores;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(scores, ElementsAre(young, loanPrior, phonePrior, cardPrior, loanPrior, phonePrior));
    answers.probabilityOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(scores, ElementsAre(young, cardPrior, loanPrior, loanPrior, phonePrior, phonePrior));
}

TEST_F(ScorerOfASet, CountsForEachPredictorOfEachSubModel) {
    std::vector<std::uint64_t> missing = {1, 1, 1};
    std::vector<std::uint64_t> unknown = {1, 1, 1};
    AnswerColumns answers;
    answers.missing = missing;
    answers.unknown = unknown;
    scorer.Score(columns, 2, answers);
    EXPECT_THAT(missing, ElementsAre(1, 3, 3));
    EXPECT_THAT(unknown, ElementsAre(2, 1, 1));
}

TEST_F(ScorerOfASet, RefusesToPredict) {
    std::vector<std::int32_t> predicted(2);
    std::vector<double> confidence(2);
    AnswerColumns answers;
    answers.predicted = predicted;
    EXPECT_THAT([&] { scorer.Score(columns, 2, answers); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("no prediction")));
    answers = {};
    answers.confidence = confidence;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
}

TEST(BatchScorer, HasNoScores_WithoutSubModels) {
    const auto set = test::MakeSet(test::TextVariable("answer", {"no", "yes"}), {});
    const BatchScorer scorer(*set);
    EXPECT_TRUE(scorer.GetSubModels().empty());
    std::vector<double> one(1);
    AnswerColumns answers;
    EXPECT_NO_THROW(scorer.Score({}, 5, answers));
    answers.probabilities = one;
    EXPECT_THROW(scorer.Score({}, 5, answers), std::invalid_argument);
}

/// A scorer of either kind, which reads texts in its first column and in another one.
class ScorerOfAnyKind : public testing::TestWithParam<bool> {
protected:
    static std::unique_ptr<ScoreModel> MakeModel() {
        if (GetParam()) return Offers();
        return Weather();
    }
    /// Two cases, with the first column's values as codes.
    static std::vector<Column> Coded(const InputDictionary& dictionary) {
        static const std::vector<std::int16_t> codes = {0, 1};
        return {CodeColumn<std::int16_t>{codes, &dictionary, {}}, AbsentColumn{}};
    }

    const std::unique_ptr<ScoreModel> model = MakeModel();
    const BatchScorer scorer{*model};
    const std::vector<Column> absent = std::vector<Column>(2);
    const std::vector<std::string_view> words = {"young", "rain"};
};

TEST_P(ScorerOfAnyKind, ScoresNoCases) {
    EXPECT_NO_THROW(scorer.Score(absent, 0, {}));
}

TEST_P(ScorerOfAnyKind, RefusesAnswersAndColumnsThatDoNotFit) {
    const std::vector<std::string_view> two = {"sunny", "sunny"};
    const std::vector<Column> columns = {TextViewColumn{two, {}}, AbsentColumn{}};
    EXPECT_THROW(scorer.Score({}, 2, {}), std::invalid_argument);
    EXPECT_THROW(scorer.Score(std::vector<Column>(1), 2, {}), std::invalid_argument);
    EXPECT_THROW(scorer.Score(columns, 3, {}), std::invalid_argument);
    std::vector<double> five(5);
    AnswerColumns answers;
    answers.probabilities = five;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    std::vector<std::uint64_t> one(1);
    answers = {};
    answers.missing = one;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
    answers = {};
    answers.unknown = one;
    EXPECT_THROW(scorer.Score(columns, 2, answers), std::invalid_argument);
}

TEST_P(ScorerOfAnyKind, TakesDictionariesOfItsCopies_AndOfNoOther) {
    const InputDictionary own = BatchScorer(scorer).MakeDictionary(0, words);
    const InputDictionary foreign = BatchScorer(*model).MakeDictionary(0, words);
    const InputDictionary ofAnotherInput = scorer.MakeDictionary(1, words);
    EXPECT_EQ(own.GetSize(), 2u);
    EXPECT_NO_THROW(scorer.Score(Coded(own), 2, {}));
    EXPECT_THROW(scorer.Score(Coded(foreign), 2, {}), std::invalid_argument);
    EXPECT_THROW(scorer.Score(Coded(ofAnotherInput), 2, {}), std::invalid_argument);
}

TEST_P(ScorerOfAnyKind, RefusesDictionariesOfAScorerThatIsGone_WhereverItsSuccessorsStand) {
    std::optional<BatchScorer> gone(*model);
    const InputDictionary dictionary = gone->MakeDictionary(0, words);
    EXPECT_NO_THROW(gone->Score(Coded(dictionary), 2, {}));
    gone.reset();
    // Each has the memory that the one before gave back.
    for (int number = 0; number < 100; ++number)
        EXPECT_THROW(BatchScorer(*model).Score(Coded(dictionary), 2, {}), std::invalid_argument);
}

TEST_P(ScorerOfAnyKind, TakesACodeForNoValue_WhereItsDictionaryHasNone) {
    const std::uint8_t onlyFirst = 0b01;
    const InputDictionary dictionary = scorer.MakeDictionary(0, words, {&onlyFirst, 0});
    std::vector<std::uint64_t> missing(scorer.GetInputsOfPredictors().size());
    AnswerColumns answers;
    answers.missing = missing;
    scorer.Score(Coded(dictionary), 2, answers);
    EXPECT_EQ(missing.front(), 1u);
}

TEST_P(ScorerOfAnyKind, RefusesInputsThatDoNotExist) {
    EXPECT_NO_THROW(scorer.MakeDictionary(1, words));
    EXPECT_THROW(scorer.MakeDictionary(2, words), std::out_of_range);
    EXPECT_THROW(scorer.MakeDictionary(2, std::vector<double>{1.0}), std::out_of_range);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, ScorerOfAnyKind, testing::Bool());

TEST(BatchScorer, RefusesAModelThatCannotScoreEveryCase) {
    const NaiveBayesModel empty;
    EXPECT_THAT([&] { BatchScorer scorer(empty); },
                ThrowsMessage<std::invalid_argument>(empty.FindScoringObstacle().message));
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
    AnswerColumns answers;
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
