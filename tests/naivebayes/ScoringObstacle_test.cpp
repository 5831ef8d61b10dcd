#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>

#include "ModelParts.h"
#include "ScoredCase.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace {

using nbscore::test::ContinuousVariable;
using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::NumberVariable;
using nbscore::test::PredictorPart;
using nbscore::test::Score;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

const PredictorPart outlook{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 1}}};

std::unique_ptr<BaseDictVar> Play() {
    return TextVariable("play", {"yes", "no"});
}

/// That a model is refused with this sentence, and that scoring this case would indeed have stopped the process.
void ExpectObstacle(NaiveBayesModel& model, const std::string& sentence, const NamedRecord& record) {
    EXPECT_EQ(model.FindScoringObstacle().message, sentence);
    EXPECT_DEATH(Score(model, record), "");
}

void ExpectObstacle(NaiveBayesModel& model, const std::string& sentence) {
    ExpectObstacle(model, sentence, TextRecord({{"outlook", "rain"}}));
}

/// That a model is accepted and scores this case.
void ExpectNone(NaiveBayesModel& model, const NamedRecord& record) {
    EXPECT_EQ(model.FindScoringObstacle().message, "");
    EXPECT_FALSE(Score(model, record).prediction.empty());
}

void ExpectNone(NaiveBayesModel& model) {
    ExpectNone(model, TextRecord({{"outlook", "rain"}}));
}

TEST(ScoringObstacleDeathTest, IsNone_WhenEverythingFits) {
    ExpectNone(*MakeModel(0.1, Play(), {1, 2}, {outlook}));
    ExpectNone(*MakeModel(0.1, Play(), {1, 2}, {}));
    ExpectNone(*MakeModel(0.1, TextVariable("play", {"yes"}), {1}, {outlook}));
}

TEST(ScoringObstacleDeathTest, IsAModelWithoutTarget) {
    NaiveBayesModel model;
    ExpectObstacle(model, "The model has no target variable.");
    model.SetTargetCounts({1, 2});
    ExpectObstacle(model, "The model has no target variable.");
}

TEST(ScoringObstacleDeathTest, IsATargetTakenAway) {
    const auto target = Play();
    NaiveBayesModel model;
    model.SetThreshold(1);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 2});
    ExpectNone(model);
    model.SetTargetVar(nullptr);
    model.SetPredictionOnly(true);
    ExpectObstacle(model, "The model has no target variable.");
}

TEST(ScoringObstacleDeathTest, IsATargetWithoutDeclaredValues) {
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {}), {}, {}),
                   "The target variable \"play\" declares no values.");
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {}), {1, 2}, {outlook}),
                   "The target variable \"play\" declares no values.");
}

TEST(ScoringObstacleDeathTest, IsATargetWithoutCounts) {
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {"yes"}), {}, {outlook}),
                   "The target variable \"play\" has no counts.");
    ExpectObstacle(*MakeModel(0.1, Play(), {}, {}), "The target variable \"play\" has no counts.");
}

TEST(ScoringObstacleDeathTest, IsATargetWithMoreCountsThanValues) {
    ExpectObstacle(*MakeModel(0.1, Play(), {1, 2, 3}, {outlook}),
                   "The target variable \"play\" declares 2 values, but the model has 3 target counts.");
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {"yes"}), {1, 2}, {}),
                   "The target variable \"play\" declares 1 value, but the model has 2 target counts.");
}

TEST(ScoringObstacleDeathTest, IsATargetWithFewerCountsThanValues) {
    ExpectObstacle(*MakeModel(0.1, Play(), {1}, {outlook}),
                   "The target variable \"play\" declares 2 values, but the model has only 1 target count.");
}

TEST(ScoringObstacleDeathTest, IsNone_WhenCountsAreFewerButNoPredictorIsEverUsable) {
    ExpectNone(*MakeModel(0.1, Play(), {1}, {}));
    ExpectNone(*MakeModel(0.1, Play(), {1}, {{"outlook", {}, {{}}}}));
}

TEST(ScoringObstacleDeathTest, IsATargetThatDeclaresAValueTwice) {
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {"yes", "no", "yes"}), {1, 2},
                              {{"outlook", {"sunny", "rain"}, {{1, 1, 0}, {2, 1, 0}}}}),
                   "The target variable \"play\" declares the value \"yes\" more than once.");
    ExpectObstacle(*MakeModel(0.1, NumberVariable("play", {1, 1.0}), {1}, {{"outlook", {"rain"}, {{1, 1}}}}),
                   "The target variable \"play\" declares the value \"1\" more than once.");
}

TEST(ScoringObstacleDeathTest, IsTheRepeatedValue_WhenItLeavesTheTablesTooNarrowAsWell) {
    ExpectObstacle(*MakeModel(0.1, TextVariable("play", {"yes", "no", "yes"}), {1, 2}, {outlook}),
                   "The target variable \"play\" declares the value \"yes\" more than once.");
}

TEST(ScoringObstacleDeathTest, IsNone_WhenARepeatedValueHasACountOfItsOwn) {
    ExpectNone(*MakeModel(0.1, TextVariable("play", {"yes", "yes"}), {1, 2}, {outlook}));
}

TEST(ScoringObstacleDeathTest, IsANameTooMany) {
    const auto renamed = MakeModel(0.1, Play(), {1, 2}, {outlook});
    renamed->SetPredictorVarNames({"outlook", "windy"});
    ExpectObstacle(*renamed, "The predictor \"windy\" has no variable.");
}

TEST(ScoringObstacleDeathTest, IsNone_WhenThereAreMoreVariablesAndEncodersThanNames) {
    const auto model = MakeModel(0.1, Play(), {1, 2}, {});
    const auto windy = TextVariable("windy", {"true"});
    model->AddPredictorVar("windy", windy.get());
    model->AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"true"}));
    model->SetPredictorVarNames({});
    ExpectNone(*model, TextRecord({{"windy", "true"}}));
}

NamedRecord WithNumber(const std::string& name, double number) {
    NamedRecord record;
    record.Set(name, std::make_unique<NumericValue>(number));
    return record;
}

TEST(ScoringObstacle, IsTold_WhetherOrNotOnlyThePredictionIsWanted) {
    const auto model = MakeModel(0.1, Play(), {9, 2, 3}, {});
    model->SetPredictionOnly(true);
    EXPECT_NE(model->FindScoringObstacle().message, "");
}

TEST(ScoringObstacle, IsFoundInReasonableTime_WhenVeryManyValuesAreDeclared) {
    std::vector<double> values(20000);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<double>(i);
    values.push_back(19999);
    const auto model = MakeModel(0.1, NumberVariable("y", values), std::vector<double>(20000, 1.0),
                                 {{"x", {"a"}, {std::vector<double>(20001, 1.0)}}});
    EXPECT_EQ(model->FindScoringObstacle().message,
              "The target variable \"y\" declares the value \"19999\" more than once.");
}

/// A model of random small parts, most of which fit.
struct RandomModel {
    std::unique_ptr<NaiveBayesModel> model = std::make_unique<NaiveBayesModel>();
    std::unique_ptr<BaseDictVar> target;
    std::vector<std::unique_ptr<BaseDictVar>> predictors;
};

NBayesInputBase::Matrix RandomCounts(std::size_t rows, std::size_t columns) {
    NBayesInputBase::Matrix counts(rows);
    for (auto& row : counts)
        row = *rc::gen::container<std::vector<double>>(columns, rc::gen::element(0.0, 1.0, 5.0));
    return counts;
}

/// Usually the size that fits, now and then one more or less.
std::size_t About(std::size_t fitting, std::size_t least) {
    const int change = *rc::gen::weightedElement<int>({{20, 0}, {1, -1}, {1, 1}});
    const auto size = static_cast<int>(fitting) + change;
    return static_cast<std::size_t>(std::max(size, static_cast<int>(least)));
}

void AddRandomPredictor(RandomModel& random, std::size_t targets) {
    const auto categories = static_cast<std::size_t>(*rc::gen::inRange(0, 4));
    const bool binned = *rc::gen::arbitrary<bool>();
    const std::string name = "x" + std::to_string(random.predictors.size());
    std::vector<double> numbers;
    for (std::size_t i = 0; i < categories; ++i)
        numbers.push_back(static_cast<double>(i));
    random.predictors.push_back(binned ? ContinuousVariable(name) : NumberVariable(name, numbers));
    random.model->AddPredictorVar(name, *rc::gen::inRange(0, 30) > 0 ? random.predictors.back().get() : nullptr);
    if (*rc::gen::inRange(0, 30) > 0) {
        INBVeskEncoder* encoder = new NBCatNumericEncoder(numbers);
        if (binned) {
            delete encoder;
            encoder = new NBinningEncoder(numbers);
        }
        random.model->AddEncoder(encoder);
    }
    const std::size_t rows = binned ? std::max<std::size_t>(categories + 1, 2) : std::max<std::size_t>(categories, 1);
    for (int table = *rc::gen::weightedElement<int>({{30, 1}, {1, 0}, {1, 2}}); table > 0; --table) {
        random.model->SetPredCounts(0, RandomCounts(About(rows, 1), About(targets, 0)));
    }
}

RandomModel MakeRandomModel() {
    RandomModel random;
    const auto targets = static_cast<std::size_t>(*rc::gen::inRange(1, 4));
    random.target = NumberVariable(
        "y", *rc::gen::container<std::vector<double>>(About(targets, 0), rc::gen::element(1.0, 2.0, 3.0, 4.0)));
    random.model->SetThreshold(*rc::gen::element(0.5, 0.001, 0.0));
    random.model->SetTargetVar(random.target.get());
    random.model->SetTargetCounts(
        *rc::gen::container<std::vector<double>>(About(targets, 0), rc::gen::element(0.0, 1.0, 1.5, 4.0)));
    for (int j = *rc::gen::inRange(0, 4); j > 0; --j)
        AddRandomPredictor(random, targets);
    return random;
}

NamedRecord RandomRecord() {
    NamedRecord record;
    for (const char* name : {"x0", "x1", "x2"}) {
        if (*rc::gen::inRange(0, 4) == 0) continue;
        record.Set(name, std::make_unique<NumericValue>(*rc::gen::element(
                             -1.0, 0.0, 0.5, 1.0, 2.0, 3.0, 99.0, std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), NumericValue::GetSysmisValue())));
    }
    return record;
}

// A model that is accepted and stops the process all the same would end this test.
RC_GTEST_PROP(ScoringObstacle, IsNoneOnlyForModelsThatScoreEveryCase, ()) {
    const RandomModel random = MakeRandomModel();
    RC_PRE(random.model->FindScoringObstacle().message.empty());
    RC_TAG(random.predictors.size());
    for (int number = 0; number < 30; ++number) {
        RC_ASSERT(!Score(*random.model, RandomRecord()).prediction.empty());
    }
}

#ifndef _WIN32  // the test behind this draws models with RapidCheck's library

/// Every case over these predictors that makes a difference to a small model.
std::vector<NamedRecord> TellingRecords() {
    const std::vector<double> numbers{-1.0, 0.0, 1.0, 2.0, 99.0};
    std::vector<NamedRecord> records(1);
    for (const char* name : {"x0", "x1", "x2"}) {
        for (const double number : numbers)
            records.push_back(WithNumber(name, number));
    }
    return records;
}

// The other way round: what is refused would have stopped the process, for one case or another.
TEST(ScoringObstacleDeathTest, IsFoundOnlyInModelsThatSomeCaseStops) {
    int refused = 0;
    for (std::size_t seed = 0; refused < 25 && seed < 2000; ++seed) {
        const auto random = rc::gen::exec(MakeRandomModel)(rc::Random(seed), 100).value();
        if (random.model->FindScoringObstacle().message.empty()) continue;
        ++refused;
        EXPECT_DEATH(
            {
                for (const NamedRecord& record : TellingRecords())
                    Score(*random.model, record);
            },
            "")
            << random.model->FindScoringObstacle().message;
    }
    EXPECT_EQ(refused, 25);
}

#endif

}  // namespace
