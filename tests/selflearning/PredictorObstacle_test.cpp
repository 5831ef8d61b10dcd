// What would stop a model of either kind at one of its predictors is found beforehand.

#include "naivebayes/NBinningEncoder.h"
#include "selflearning/EitherModel.h"

namespace {

using nbscore::test::ContinuousVariable;
using nbscore::test::EitherModel;
using nbscore::test::NamedRecord;
using nbscore::test::NameOfKind;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

const NamedRecord& Rain() {
    static const NamedRecord record = TextRecord({{"outlook", "rain"}, {"windy", "true"}});
    return record;
}

NamedRecord Age(double number) {
    NamedRecord record;
    record.Set("age", std::make_unique<NumericValue>(number));
    return record;
}

class PredictorObstacleDeathTest : public ::testing::TestWithParam<bool> {
protected:
    /// That the model is refused with this sentence, and that scoring this case would indeed have stopped the process.
    void ExpectObstacle(const std::string& sentence, const NamedRecord& record = Rain()) const {
        const std::string subModel = GetParam() ? "Sub-model 1 (\"\"): " : "";
        EXPECT_EQ(model.As<ModelSelfCheck>().FindScoringObstacle().message, subModel + sentence);
        EXPECT_DEATH(model.Score(record), "");
    }
    /// That the model is accepted and scores this case.
    void ExpectNone(const NamedRecord& record = Rain()) const {
        EXPECT_EQ(model.As<ModelSelfCheck>().FindScoringObstacle().message, "");
        model.Score(record);
    }
    void AddOutlook(const NBayesInputBase::Matrix& counts = {{1, 1}, {2, 1}}) {
        model.AddTextPredictor({"outlook", {"sunny", "rain"}, counts});
    }
    void AddAge(const std::vector<double>& cutpoints, std::size_t rows) {
        model.AddPredictor(ContinuousVariable("age"), new NBinningEncoder(cutpoints),
                           NBayesInputBase::Matrix(rows, {1, 1}));
    }

    const std::unique_ptr<BaseDictVar> windy = TextVariable("windy", {"true"});
    EitherModel model{GetParam(), 0.1, {1, 2}};
};

TEST_P(PredictorObstacleDeathTest, IsNone_WhenEverythingFits) {
    ExpectNone();
    AddOutlook();
    ExpectNone();
}

TEST_P(PredictorObstacleDeathTest, IsATableWithFewerRowsThanCodes) {
    AddOutlook({{1, 1}});
    ExpectObstacle("The count table of predictor \"outlook\" has 1 row, but its encoder gives codes up to 1.");
}

TEST_P(PredictorObstacleDeathTest, IsATableNarrowerThanTheTarget) {
    AddOutlook({{1}, {2}});
    ExpectObstacle(
        "The count table of predictor \"outlook\" counts for 1 target value only, but the target variable \"play\" "
        "declares 2.");
}

TEST_P(PredictorObstacleDeathTest, IsAnInputWithoutCounts) {
    model.AddTextPredictor({"outlook", {"rain"}, {{}}});
    ExpectObstacle("The input \"outlook\" has no counts.");
}

TEST_P(PredictorObstacleDeathTest, IsNone_WhenATableIsLargerThanNeeded) {
    AddOutlook({{1, 1, 5}, {2, 3, 4}, {1, 1, 1}});
    ExpectNone();
}

TEST_P(PredictorObstacleDeathTest, IsNone_WhenATableFitsNothingButItsPredictorHasNoCategories) {
    AddOutlook();
    model.AddTextPredictor({"unused", {}, {{}}});
    ExpectNone();
}

TEST_P(PredictorObstacleDeathTest, IsAPredictorWithoutVariable) {
    AddOutlook();
    model.AddVar("windy", nullptr);
    ExpectObstacle("The predictor \"windy\" has no variable.");
}

TEST_P(PredictorObstacleDeathTest, IsAPredictorWithoutEncoder) {
    AddOutlook();
    model.AddVar("windy", windy.get());
    ExpectObstacle("The predictor \"windy\" has no encoder.");
    model.AddEncoder(nullptr);
    ExpectObstacle("The predictor \"windy\" has no encoder.");
}

TEST_P(PredictorObstacleDeathTest, IsATableTooMany) {
    AddOutlook();
    model.AddCounts({{1, 1}});
    ExpectObstacle("The model has 2 count tables for 1 predictor.");
}

TEST_P(PredictorObstacleDeathTest, IsNone_WhenAPredictorHasNoTable) {
    AddOutlook();
    model.AddVar("windy", windy.get());
    model.AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"true"}));
    ExpectNone();
}

TEST_P(PredictorObstacleDeathTest, IsABinWithoutRow) {
    AddAge({10, 20}, 2);
    ExpectObstacle("The count table of predictor \"age\" has 2 rows, but its encoder gives codes up to 2.", Age(21));
}

TEST_P(PredictorObstacleDeathTest, IsNone_WhenEveryBinHasARow) {
    AddAge({10, 20}, 3);
    ExpectNone(Age(21));
}

TEST_P(PredictorObstacleDeathTest, IsASingleBinWithASingleRow) {
    AddAge({}, 1);
    ExpectObstacle("The count table of predictor \"age\" has 1 row, but its encoder gives codes up to 1.", Age(0));
}

TEST_P(PredictorObstacleDeathTest, IsNone_WhenASingleBinHasTwoRows) {
    AddAge({}, 2);
    ExpectNone(Age(0));
}

INSTANTIATE_TEST_SUITE_P(BothKinds, PredictorObstacleDeathTest, ::testing::Bool(), NameOfKind);

}  // namespace
