// Scorers hold all that they need: the translator, the model and the plug-in itself may go before the first case.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <sstream>

#include "batch/Answers.h"
#include "batch/DrawnTable.h"
#include "framework/ModelSelfTables.h"
#include "plugin/LoadedPlugin.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"

namespace nbscore::test {
namespace {

/// Reads the document, makes a scorer, draws cases, and scores them when the plug-in has left the process.
void ExpectScoredWithoutPlugin(const std::string& document, Randomness& random) {
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    std::optional<BatchEngine> engine;
    InputTable table;
    Answers expected;
    {
        const LoadedPlugin plugin;
        std::istringstream source(document);
        const std::unique_ptr<ScoreModel> model(plugin.MakeTranslator()->ParseFromTree(source, "UTF-8"));
        table = DrawTable(dynamic_cast<const ModelSelfTables&>(*model).GetTables(), 50, random);
        expected = AnswersOneByOne(*model, table);
        engine.emplace(*model);
    }
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    EXPECT_EQ(FirstDifference(expected, AnswersInBatches(*engine, table, {17}, random)), "");
}

TEST(ScorerIndependence, HoldsForASingleClassifier_WhosePluginIsGone) {
    Randomness random(1);
    for (int number = 0; number < 20 && !HasFailure(); ++number)
        ExpectScoredWithoutPlugin(MakeRandomDocument(random).text, random);
}

TEST(ScorerIndependence, HoldsForASet_WhosePluginIsGone) {
    Randomness random(2);
    for (int number = 0; number < 20 && !HasFailure(); ++number)
        ExpectScoredWithoutPlugin(MakeRandomSet(random).text, random);
}

}  // namespace
}  // namespace nbscore::test
