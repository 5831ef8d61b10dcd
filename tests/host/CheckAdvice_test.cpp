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
