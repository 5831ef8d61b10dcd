#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "check/DocumentCheck.h"
#include "cli/FruitFields.h"
#include "host/LoadedModel.h"
#include "host/RefusedSamples.h"
#include "pmml/RefusalTable.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string Fruit(std::string_view piece, std::string_view replacement) {
    return Replace(fruitDocument, piece, replacement);
}

class CheckAdvice : public testing::Test {
protected:
    DocumentCheck Check(const std::string& document, bool adapt = false, const Limits& limits = {},
                        ScoringRule rule = ScoringRule::Smoothed) const {
        return CheckDocument(plugin, folder.Write("document.pmml", document), adapt, limits, rule);
    }

    TemporaryFolder folder;
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

TEST_F(CheckAdvice, IsThatOfTheRefusalOrObstacle) {
    std::set<std::string> given;
    for (const RefusedSample& sample : RefusedSamples()) {
        const DocumentCheck check = Check(sample.document, sample.adapt, sample.limits, sample.rule);
        ASSERT_FALSE(check.problems.empty()) << sample.advice;
        EXPECT_THAT(check.problems.front().advice, StartsWith(sample.advice)) << check.problems.front().message;
        given.insert(check.problems.front().advice);
    }
    // Behind the advice, a word about warnings or the other rule may stand.
    for (int kind = ScoringObstacle::None + 1; kind < ScoringObstacle::Other; ++kind) {
        const std::string_view advice = AdviceAgainst(static_cast<ScoringObstacle::Kind>(kind));
        EXPECT_TRUE(std::ranges::any_of(given, [advice](const std::string& text) { return text.starts_with(advice); }))
            << kind;
    }
}

TEST_F(CheckAdvice, NamesTheRightFunction_WhereOnlyUpperAndLowerCaseDiffer) {
    const std::string document = Transforming(DerivedText("d", Apply("Uppercase", "<FieldRef field=\"colour\"/>")));
    EXPECT_EQ(Check(document).problems.front().advice,
              "Write \"uppercase\": names of functions are told apart by upper and lower case.");
}

TEST_F(CheckAdvice, LooksBehindThePrefixOfProducers) {
    const auto adviceFor = [this](const std::string& function) {
        return Check(Transforming(DerivedText("d", Apply(function, FieldRef("colour"))))).problems.front().advice;
    };
    EXPECT_THAT(adviceFor("x-Round"), HasSubstr("built-in function \"round\""));
    EXPECT_THAT(adviceFor("x-guess"), StartsWith("Define the function"));
    EXPECT_THAT(adviceFor("guess"), StartsWith("Correct the name"));
    EXPECT_THAT(adviceFor("x-"), StartsWith("Correct the name"));
}

TEST_F(CheckAdvice, IsToAdapt_WhereThatHelps) {
    const std::string newer = Fruit("<DataDictionary>", "<DataDictionary><Extension/>");
    EXPECT_EQ(Check(newer).problems.front().advice,
              "Read it with --adapt: the document is fine but for what that rewrites.");
    EXPECT_EQ(Check(Replace(newer, "0.001", "0")).problems.front().advice,
              "Read it with --adapt, which rewrites this. What is wrong then: Threshold can't be zero! Or read it with "
              "--rule standard: by that rule it can be scored.");
    const std::string twice = "<Value value=\"apple\"/><Value value=\"apple\"/>";
    EXPECT_EQ(
        Check(Replace(newer, "<Value value=\"apple\"/>", twice)).problems.front().advice,
        "Read it with --adapt, which rewrites this. What is wrong then: The target variable \"fruit\" declares the "
        "value \"apple\" twice.");
}

TEST_F(CheckAdvice, SaysThatAdaptingIsNotAll_WhereThereAreWarnings) {
    std::string newer = Fruit("<DataDictionary>", "<DataDictionary><Extension/>");
    newer = Replace(newer, "functionName=", "isScorable=\"false\" functionName=");
    EXPECT_EQ(Check(newer).problems.front().advice,
              "Read it with --adapt, which rewrites this. That alone does not make its answers right: see the warnings "
              "below.");
}

TEST_F(CheckAdvice, IsTheStandardsRuleFirst_ForDocumentsOfOtherProducers) {
    const std::string zero = Replace(Fruit("<DataDictionary>", "<DataDictionary><Extension/>"), "0.001", "0.0");
    const std::string foreign = Replace(zero, "<Header/>", "<Header><Application name=\"Exporter\"/></Header>");
    EXPECT_EQ(Check(foreign).problems.front().advice,
              "Read it with --rule standard: by that rule it can be scored. Or: Read it with --adapt, which rewrites "
              "this. What is wrong then: Threshold can't be zero!");
}

TEST_F(CheckAdvice, IsNeverTheSmoothedRule_WhichPassesOverWhatIsNotUnderstood) {
    const std::string text = Fruit("threshold=", "priorWeight=\"3\" threshold=");
    const DocumentCheck check = Check(text, false, {}, ScoringRule::Standard);
    ASSERT_EQ(check.problems.size(), 1U);
    EXPECT_THAT(check.problems.front().advice, StartsWith("Take the attribute out"));
    EXPECT_THAT(check.problems.front().advice, testing::Not(HasSubstr("smoothed")));
    ASSERT_TRUE(check.otherRule);
    EXPECT_TRUE(check.otherRule->CanBeScored());
    EXPECT_FALSE(check.otherRule->IsSound());
    EXPECT_FALSE(Check(text).IsSound());
    const std::string target = Fruit("<BayesInputs>", "<Targets><Target field=\"x\"/></Targets><BayesInputs>");
    const DocumentCheck ofOtherTarget = Check(target, false, {}, ScoringRule::Standard);
    EXPECT_TRUE(ofOtherTarget.otherRule->IsSound());
    EXPECT_THAT(ofOtherTarget.problems.front().advice, testing::Not(HasSubstr("smoothed")));
}

TEST_F(CheckAdvice, HintsAtTheStandardsRule_OnlyWhereThatCanScoreTheDocument) {
    const std::string treated =
        Fruit("<MiningField name=\"colour\"", "<MiningField name=\"colour\" missingValueReplacement=\"red\"");
    EXPECT_THAT(Check(treated).problems.front().advice, HasSubstr("--rule standard, which heeds this"));
    const DocumentCheck refused = Check(Replace(treated, "<BayesInputs>", "<Foo/><BayesInputs>"));
    ASSERT_EQ(refused.problems.size(), 2U);
    for (const DocumentProblem& problem : refused.problems)
        EXPECT_THAT(problem.advice, testing::Not(HasSubstr("--rule standard")));
    const std::string set = Replace(treated, "threshold=", "algorithmName=\"SelfLearning\" threshold=");
    for (const DocumentProblem& problem : Check(set).problems)
        EXPECT_THAT(problem.advice, testing::Not(HasSubstr("--rule standard")));
}

TEST_F(CheckAdvice, IsNotToAdapt_WhereThatLeavesTheFault) {
    const std::string both = Replace(Fruit("<BayesInputs>", "<BayesInputs><Other/>"), "<PairCounts", "<PairCounts");
    EXPECT_THAT(
        Check(Replace(both, "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"colour\"><Extension/>"))
            .problems.front()
            .advice,
        StartsWith("Take everything but BayesInput"));
}

}  // namespace
}  // namespace nbscore::test
