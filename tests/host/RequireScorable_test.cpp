#include <gtest/gtest.h>

#include "framework/ModelSelfCheck.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "support/FakeModel.h"
#include "support/FakeSet.h"
#include "support/Message.h"

namespace nbscore::test {
namespace {

std::string GetObstacle(std::unique_ptr<ScoreModel> model) {
    const LoadedModel loaded(nullptr, std::move(model));
    return GetMessageOf<UnscorableModelError>([&loaded] { loaded.RequireScorable(); });
}

std::unique_ptr<FakeModel> MakeModelWithTarget(std::unique_ptr<BaseDictVar> target) {
    auto model = std::make_unique<FakeModel>();
    model->AddField(std::move(target), ScoreModel::TargetRole);
    return model;
}

std::unique_ptr<BaseDictVar> MakeNumericTarget(const std::vector<double>& values) {
    auto target = MakeNumberField("y");
    for (const double value : values) {
        target->AddValidValue(std::make_unique<NumericValue>(value), "");
    }
    return target;
}

TEST(RequireScorable, ModelPasses_WhenItsTargetDeclaresDistinctValues) {
    const LoadedModel texts(nullptr, MakeModelWithTarget(MakeTextField("y", {"a", "b", "A", ""})));
    EXPECT_NO_THROW(texts.RequireScorable());
    const LoadedModel numbers(nullptr, MakeModelWithTarget(MakeNumericTarget({1.0, 2.0, -1.0, 0.0})));
    EXPECT_NO_THROW(numbers.RequireScorable());
}

TEST(RequireScorable, ModelIsRefused_WhenItHasNoTarget) {
    EXPECT_EQ(GetObstacle(std::make_unique<FakeModel>()), "The model has no target variable.");
}

TEST(RequireScorable, SetPasses_WhenItHasNoTarget) {
    const LoadedModel set(nullptr, std::make_unique<FakeSet>());
    EXPECT_NO_THROW(set.RequireScorable());
}

TEST(RequireScorable, SetIsRefused_WhenItsTargetDeclaresAValueTwice) {
    auto set = std::make_unique<FakeSet>();
    set->AddField(MakeTextField("y", {"a", "b", "a"}), ScoreModel::TargetRole);
    EXPECT_EQ(GetObstacle(std::move(set)), "The target variable \"y\" declares the value \"a\" twice.");
}

TEST(RequireScorable, ModelIsRefused_WhenItsTargetDeclaresNoValues) {
    EXPECT_EQ(GetObstacle(MakeModelWithTarget(MakeTextField("y"))), "The target variable \"y\" declares no values.");
}

TEST(RequireScorable, ModelIsRefused_WhenItsTargetDeclaresAValueTwice) {
    EXPECT_EQ(GetObstacle(MakeModelWithTarget(MakeTextField("y", {"a", "b", "a"}))),
              "The target variable \"y\" declares the value \"a\" twice.");
    EXPECT_EQ(GetObstacle(MakeModelWithTarget(MakeNumericTarget({1.0, 2.0, 1.0}))),
              "The target variable \"y\" declares the value \"1\" twice.");
    EXPECT_THROW(LoadedModel(nullptr, MakeModelWithTarget(MakeNumericTarget({0.0, -0.0}))).RequireScorable(),
                 UnscorableModelError);
}

TEST(RequireScorable, NumberAndTextAreTwoValues_WhenTheyLookAlike) {
    auto target = MakeTextField("y", {"1"});
    target->AddValidValue(std::make_unique<NumericValue>(1.0), "");
    const LoadedModel loaded(nullptr, MakeModelWithTarget(std::move(target)));
    EXPECT_NO_THROW(loaded.RequireScorable());
}

class SelfCheckingModel : public FakeModel, public ModelSelfCheck {
public:
    explicit SelfCheckingModel(std::string foundObstacle) : obstacle(std::move(foundObstacle)) {
        AddField(MakeTextField("y", {"a"}), TargetRole);
    }
    ScoringObstacle FindScoringObstacle() const override {
        return {obstacle.empty() ? ScoringObstacle::None : ScoringObstacle::CountsMissing, obstacle};
    }

private:
    std::string obstacle;
};

TEST(RequireScorable, ModelIsRefusedInItsOwnWords_WhenItChecksItself) {
    EXPECT_EQ(GetObstacle(std::make_unique<SelfCheckingModel>("No counts.")), "No counts.");
    const LoadedModel sound(nullptr, std::make_unique<SelfCheckingModel>(""));
    EXPECT_NO_THROW(sound.RequireScorable());
}

}  // namespace
}  // namespace nbscore::test
