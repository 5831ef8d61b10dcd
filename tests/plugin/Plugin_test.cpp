#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "LoadedPlugin.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ScoreClsResult.h"
#include "reading/BaseTranslator.h"
#include "reading/PMMLTranslator.h"
#include "support/ParseDocument.h"
#include "support/documents/CompleteDocuments.h"

namespace nbscore::test {
namespace {

/// A document that is refused when most of it has been read.
std::string FaultyDocument() {
    TestDocument document;
    document.bayesInputs = "\n<Fault/>";
    return document.Text();
}

/// Parses and scores with the plug-in, and destroys all that it made. Returns the probability of "yes".
double ProbabilityOfYes(const LoadedPlugin& plugin, const std::string& outlook) {
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    const ParseOutcome outcome = ParseWith(*translator, TestDocument().Text());
    BaseCaseRecord record({"outlook"});
    record.SetText(0, outlook);
    ScoreResult* scored = nullptr;
    outcome.model->GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> result(scored);
    return dynamic_cast<const ScoreClsResult&>(*result).GetAllValuePercent().at(0).second;
}

TEST(Plugin, ScoresACase_WhenLoadedAtRunTime) {
    const LoadedPlugin plugin;
    EXPECT_DOUBLE_EQ(ProbabilityOfYes(plugin, "sunny"), 3.5 / 5.0);
    EXPECT_DOUBLE_EQ(ProbabilityOfYes(plugin, "rain"), 2.5 / 7.0);
}

TEST(Plugin, LeavesTheProcess_WhenUnloaded) {
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    {
        const LoadedPlugin plugin;
        EXPECT_TRUE(LoadedPlugin::IsInProcess());
        ProbabilityOfYes(plugin, "sunny");
    }
    EXPECT_FALSE(LoadedPlugin::IsInProcess());
}

TEST(Plugin, ScoresAgain_WhenLoadedAgain) {
    for (int i = 0; i < 3; ++i) {
        const LoadedPlugin plugin;
        EXPECT_DOUBLE_EQ(ProbabilityOfYes(plugin, "sunny"), 3.5 / 5.0);
    }
    EXPECT_FALSE(LoadedPlugin::IsInProcess());
}

TEST(Plugin, StaysInTheProcess_WhileAnyoneHasItLoaded) {
    const LoadedPlugin first;
    { const LoadedPlugin second; }
    EXPECT_DOUBLE_EQ(ProbabilityOfYes(first, "sunny"), 3.5 / 5.0);
}

TEST(Plugin, ThrowsByValueIntoTheHost) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    const ParseOutcome outcome = ParseWith(*translator, FaultyDocument());
    ASSERT_TRUE(outcome.refusal);
    EXPECT_FALSE(outcome.thrownAsPointer);
    EXPECT_EQ(outcome.refusal->GetCode(), 12);
    EXPECT_EQ(outcome.refusal->GetMessage(), "Only BayesInput elements are allowed here.");
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, "/PMML/NaiveBayesModel[1]/BayesInputs[1]/Fault[1]");
}

TEST(Plugin, ThrowsByValueAsAStandardException) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    std::istringstream stream("<PMML><DataDictionary/></PMML>");
    std::string what;
    try {
        translator->ParseFromTree(stream, "UTF-8");
    } catch (const std::exception& fault) {
        what = fault.what();
    }
    EXPECT_EQ(what, "<NaiveBayesModel> is required!");
}

TEST(Plugin, ThrowsAPointerIntoTheHost) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    TestDocument document;
    document.miningSchema = MiningField("play", "predicted") + MiningField("outlook", "predicted");
    const ParseOutcome outcome = ParseWith(*translator, document.Text());
    EXPECT_TRUE(outcome.thrownAsPointer);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetMessage(), "Only one target is allowed.");
}

TEST(Plugin, LetsARefusalOutliveIt) {
    ParseOutcome outcome;
    {
        const LoadedPlugin plugin;
        const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
        outcome = ParseWith(*translator, "<PMML><DataDictionary/></PMML>");
    }
    ASSERT_TRUE(outcome.refusal);
    EXPECT_STREQ(outcome.refusal->what(), "<NaiveBayesModel> is required!");
}

TEST(Plugin, GivesObjectsWithTheFrameworksInterfaces) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    EXPECT_NE(dynamic_cast<BaseTranslator*>(translator.get()), nullptr);
    EXPECT_NE(dynamic_cast<PMMLTranslator*>(translator.get()), nullptr);
    const ParseOutcome outcome = ParseWith(*translator, TestDocument().Text());
    ASSERT_TRUE(outcome.model);
    const auto* selfCheck = dynamic_cast<const ModelSelfCheck*>(outcome.model.get());
    ASSERT_NE(selfCheck, nullptr);
    EXPECT_EQ(selfCheck->FindScoringObstacle().message, "");
}

TEST(Plugin, HandsAnUnfinishedModelToTheHost) {
    const LoadedPlugin plugin;
    const std::unique_ptr<ScoreTranslator> translator = plugin.MakeTranslator();
    ParseOutcome outcome;
    VisitDom(FaultyDocument(), [&](xercesc::DOMDocument& document) {
        outcome = OutcomeOf([&] { return translator->ParseFromTree(&document, "UTF-8"); });
    });
    ASSERT_TRUE(outcome.refusal);
    const std::unique_ptr<ScoreModel> unfinished(dynamic_cast<BaseTranslator&>(*translator).TakeUnfinishedModel());
    ASSERT_TRUE(unfinished);
    EXPECT_EQ(unfinished->GetModelType(), 21);
}

TEST(Plugin, ExportsOnlyItsFactoryUnderAPlainName) {
    const LoadedPlugin plugin;
    EXPECT_TRUE(plugin.HasSymbol("GiveMyTranslator"));
    for (const char* name : {"PrintVector", "ParseFromTree", "ReadBayesInputs", "main", "_Z16GiveMyTranslatorv"}) {
        EXPECT_FALSE(plugin.HasSymbol(name)) << name;
    }
}

}  // namespace
}  // namespace nbscore::test
