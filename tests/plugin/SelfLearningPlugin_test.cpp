// A set of sub-models, used by a host that knows its descriptors but does not link the plug-in.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "LoadedPlugin.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ModelSelfCheck.h"
#include "framework/SubModelScoring.h"
#include "selflearning/SelfLearningResult.h"
#include "support/ParseDocument.h"
#include "support/documents/CompleteDocuments.h"

namespace nbscore::test {
namespace {

using Descriptor = SelfLearningResult::ModelDescriptor;

/// Two sub-models, of which the first reads the outlook and the second nothing.
std::string Document(const std::string& secondAttributes = R"(modelName="second" threshold="0.5")") {
    SubModelText first = Named("first");
    first.extensions = R"(<Extension name="meanPerformance" value="0.25"/>)";
    SubModelText second = WithoutInputs();
    second.attributes = secondAttributes;
    return SelfLearningText({first, second});
}

/// Parses and scores with the plug-in, and destroys all that it made. Reads each case's list through a class that this
/// program compiled itself.
std::vector<Descriptor> Describe(const LoadedPlugin& plugin, const std::vector<std::string>& outlooks) {
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    const ParseOutcome outcome = ParseWith(*translator, Document());
    BaseCaseRecord record({"outlook"});
    ScoreResult* scored = nullptr;
    std::vector<Descriptor> described;
    for (const std::string& outlook : outlooks) {
        record.SetText(0, outlook);
        outcome.model->GetScore(&record, scored, false);
        const auto* list = dynamic_cast<const VectorValue<Descriptor>*>(scored->GetPrediction());
        if (list == nullptr) {
            ADD_FAILURE() << "the prediction is no list of descriptors";
            continue;
        }
        described.insert(described.end(), list->GetVectorValue().begin(), list->GetVectorValue().end());
    }
    const std::unique_ptr<ScoreResult> owner(scored);
    return described;
}

TEST(SelfLearningPlugin, LetsAHostReadItsDescriptors_WhichOutliveIt) {
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    std::vector<Descriptor> described;
    {
        const LoadedPlugin plugin;
        described = Describe(plugin, {"rain", "sunny"});
    }
    EXPECT_FALSE(LoadedPlugin::IsInProcess());
    ASSERT_EQ(described.size(), 4u);
    EXPECT_EQ(described[0].modelName, "first");
    EXPECT_DOUBLE_EQ(described[0].score, 4.5 / 7);
    EXPECT_EQ(described[0].assessmentMean, 0.25);
    EXPECT_EQ(described[0].assessmentStdDev, MCMV::gMissingValue);
    EXPECT_EQ(described[1].modelName, "second");
    EXPECT_DOUBLE_EQ(described[1].score, 5.5 / 3);
    EXPECT_DOUBLE_EQ(described[2].score, 1.5 / 5);
}

TEST(SelfLearningPlugin, ScoresAgain_WhenLoadedAgain) {
    for (int i = 0; i < 3; ++i) {
        const LoadedPlugin plugin;
        EXPECT_DOUBLE_EQ(Describe(plugin, {"rain"}).at(0).score, 4.5 / 7);
    }
    EXPECT_FALSE(LoadedPlugin::IsInProcess());
}

TEST(SelfLearningPlugin, CopiesAListOfTheHost) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    const ParseOutcome outcome = ParseWith(*translator, Document());
    ScoreResult* scored = nullptr;
    const BaseCaseRecord record({"outlook"});
    outcome.model->GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> owner(scored);
    // Each side accepts the other's list as one of its own.
    const std::unique_ptr<ScoreValue> theirs(scored->GetPrediction()->Clone());
    const VectorValue<Descriptor> ours({{"ours", 0.5, 1, 2}});
    theirs->SetValue(&ours);
    EXPECT_EQ(theirs->GetInt(), 1);
    VectorValue<Descriptor> taken({});
    taken.SetValue(scored->GetPrediction());
    EXPECT_EQ(taken.Size(), 2);
    EXPECT_TRUE(scored->GetPrediction()->operator==(taken));
}

TEST(SelfLearningPlugin, GivesObjectsWithTheFrameworksInterfaces) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    const ParseOutcome outcome = ParseWith(*translator, Document());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetModelType(), 25);
    const auto* selfCheck = dynamic_cast<const ModelSelfCheck*>(outcome.model.get());
    ASSERT_NE(selfCheck, nullptr);
    EXPECT_EQ(selfCheck->FindScoringObstacle().message, "");
    EXPECT_NE(dynamic_cast<SubModelScoring*>(outcome.model.get()), nullptr);
}

TEST(SelfLearningPlugin, ThrowsIntoTheHost_AndStillUnloads) {
    {
        const LoadedPlugin plugin;
        const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
        const ParseOutcome outcome = ParseWith(*translator, Document(R"(threshold="0.5")"));
        ASSERT_TRUE(outcome.refusal);
        EXPECT_EQ(outcome.refusal->GetCode(), 2);
        EXPECT_EQ(outcome.refusal->GetPlace().elementPath, "/PMML/NaiveBayesModel[2]");
    }
    EXPECT_FALSE(LoadedPlugin::IsInProcess());
}

}  // namespace
}  // namespace nbscore::test
