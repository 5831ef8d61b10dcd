// A single classifier laid open.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ModelParts.h"
#include "framework/ModelSelfTables.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointee;
using testing::SizeIs;

/// Adds a predictor over a variable that somebody else owns; without counts it has no table.
void AddPredictor(NaiveBayesModel& model, const ScoreDictVar& var, INBVeskEncoder* encoder,
                  const NBayesInputBase::Matrix& counts) {
    model.AddPredictorVar(var.GetName(), &var);
    model.AddEncoder(encoder);
    if (!counts.empty()) model.SetPredCounts(0, counts);
}

ModelTables TablesOf(const NaiveBayesModel& model) {
    return dynamic_cast<const ModelSelfTables&>(model).GetTables();
}

TEST(ModelTables, HoldTheNumbersThatScoringMultiplies) {
    const auto model =
        MakeModel(0.5, TextVariable("play", {"yes", "no"}), {5, 3}, {{"outlook", {"sunny", "rain"}, {{3, 1}, {2, 2}}}});
    const ModelTables tables = TablesOf(*model);
    EXPECT_FALSE(tables.isSet);
    EXPECT_EQ(tables.target->GetName(), "play");
    ASSERT_THAT(tables.targetCategories, SizeIs(2));
    EXPECT_EQ(tables.targetCategories[1]->GetString(), "no");
    ASSERT_THAT(tables.classifiers, SizeIs(1));
    const ClassifierTables& classifier = tables.classifiers[0];
    EXPECT_THAT(classifier.priors, ElementsAre((0.5 + 5) / (2 * 0.5 + 1 / 0.5), (0.5 + 3) / (2 * 0.5 + 1 / 0.5)));
    EXPECT_THAT(classifier.targetCounts, ElementsAre(5, 3));
    ASSERT_THAT(classifier.predictors, SizeIs(1));
    const PredictorTables& outlook = classifier.predictors[0];
    EXPECT_EQ(outlook.var->GetName(), "outlook");
    EXPECT_EQ(outlook.kind, PredictorTables::Texts);
    EXPECT_THAT(outlook.texts, ElementsAre(Pointee(std::string("sunny")), Pointee(std::string("rain"))));
    EXPECT_THAT(*outlook.probabilities, ElementsAre(ElementsAre((0.5 + 3) / (2 * 0.5 + 5), (0.5 + 1) / (2 * 0.5 + 3)),
                                                    ElementsAre((0.5 + 2) / (2 * 0.5 + 5), (0.5 + 2) / (2 * 0.5 + 3))));
}

TEST(ModelTables, TellNumbersAndBinsApart_AndPredictorsThatNobodyCounted) {
    const auto target = TextVariable("answer", {"no", "yes"});
    const auto rooms = NumberVariable("rooms", {});
    const auto age = ContinuousVariable("age");
    NaiveBayesModel model;
    model.SetThreshold(0.5);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 1});
    AddPredictor(model, *rooms, new NBCatNumericEncoder(std::vector<double>{3.0, 1.0}), {{1, 1}, {1, 1}});
    AddPredictor(model, *age, new NBinningEncoder(std::vector<double>{18.0, 65.0}), {});
    const std::vector<PredictorTables> predictors = TablesOf(model).classifiers.at(0).predictors;
    EXPECT_EQ(predictors.at(0).kind, PredictorTables::Numbers);
    EXPECT_THAT(predictors.at(0).numbers, ElementsAre(3.0, 1.0));
    EXPECT_NE(predictors.at(0).probabilities, nullptr);
    EXPECT_EQ(predictors.at(1).kind, PredictorTables::Bins);
    EXPECT_THAT(predictors.at(1).numbers, ElementsAre(18.0, 65.0));
    EXPECT_EQ(predictors.at(1).probabilities, nullptr);
}

/// Only the class tells that it may give other codes.
class DerivedEncoder : public NBCatStringEncoder {
public:
    using NBCatStringEncoder::NBCatStringEncoder;
};

TEST(ModelTables, CallEncodersOfOtherClassesForeign) {
    const auto target = TextVariable("answer", {"no", "yes"});
    const auto colour = TextVariable("colour", {});
    NaiveBayesModel model;
    model.SetThreshold(0.5);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({1, 1});
    AddPredictor(model, *colour, new DerivedEncoder(std::vector<std::string>{"red"}), {{1, 1}});
    const PredictorTables predictor = TablesOf(model).classifiers.at(0).predictors.at(0);
    EXPECT_EQ(predictor.kind, PredictorTables::Foreign);
    EXPECT_THAT(predictor.texts, IsEmpty());
}

TEST(ModelTables, SayWhetherDerivedFieldsAreRead) {
    const auto model = MakeModel(0.5, TextVariable("play", {"yes", "no"}), {5, 3}, {});
    EXPECT_FALSE(TablesOf(*model).readsDerivedFields);
    model->SetNeedDerivedPredictor(true);
    EXPECT_TRUE(TablesOf(*model).readsDerivedFields);
}

}  // namespace
}  // namespace nbscore::test
