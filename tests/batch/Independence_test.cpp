// Scorers hold all that they need: the translator, the model and the plug-in itself may go before the first case.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <sstream>

#include "batch/Answers.h"
#include "batch/DrawnTable.h"
#include "batch/StandardAnswers.h"
#include "framework/ModelSelfTables.h"
#include "plugin/LoadedPlugin.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "support/documents/StandardElements.h"

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

/// Of every kind of treatment and input.
std::string TreatedDocument() {
    StandardDocument document;
    document.dataFields += DataField("colour", FieldType::Texts, ValueElement("green") + ValueElement("yellow"));
    document.miningFields =
        TreatedField("weight", Attribute("outliers", "asExtremeValues") + Attribute("lowValue", "0") +
                                   Attribute("highValue", "300") + Attribute("missingValueReplacement", "170")) +
        TreatedField("colour", Attribute("invalidValueTreatment", "asMissing"));
    document.inputs += BayesInput(
        "colour",
        PairCounts("green", TargetValueCounts(TargetValueCount("apple", "2") + TargetValueCount("pear", "1"))) +
            PairCounts("yellow", TargetValueCounts(TargetValueCount("apple", "1"))));
    return document.Text();
}

TEST(ScorerIndependence, HoldsByTheStandardsRule_WhenThePluginIsGone) {
    Randomness random(3);
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    std::optional<BatchScorer> scorer;
    InputTable table{.cases = 6,
                     .names = {"weight", "colour"},
                     .columns = {{150.0, 1e9, {}, -5.0, 200.0, 180.0}, {"green", "yellow", "blue", {}, {}, "yellow"}}};
    Answers expected;
    {
        const LoadedPlugin plugin;
        std::istringstream source(TreatedDocument());
        const std::unique_ptr<ScoreModel> model(
            plugin.MakeTranslator(ScoringRule::Standard)->ParseFromTree(source, "UTF-8"));
        expected = ScoreOneByOne(*model, table).answers;
        scorer.emplace(*model);
    }
    ASSERT_FALSE(LoadedPlugin::IsInProcess());
    Answers actual = ScoreColumns(*scorer, table, random);
    expected.missing = {0, 3};
    EXPECT_EQ(FirstDifference(expected, actual), "");
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
