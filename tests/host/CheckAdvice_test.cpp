#include "host/CheckAdvice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "cli/FruitFields.h"
#include "host/AdviceTable.h"
#include "host/DocumentCheck.h"
#include "host/FunctionSuggestion.h"
#include "host/RefusedSamples.h"
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
    DocumentCheck Check(const std::string& document, bool adapt = false, const Limits& limits = {}) const {
        return CheckDocument(plugin, folder.Write("document.pmml", document), adapt, limits);
    }

    TemporaryFolder folder;
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

TEST_F(CheckAdvice, IsTheTables_AndEveryFamilyOfTheTableIsReached) {
    std::set<const Advice*> reached;
    for (const RefusedSample& sample : RefusedSamples()) {
        const DocumentCheck check = Check(sample.document, sample.adapt, sample.limits);
        ASSERT_FALSE(check.problems.empty()) << sample.advice;
        const DocumentProblem& problem = check.problems.front();
        EXPECT_THAT(problem.advice, StartsWith(sample.advice)) << problem.message;
        const Advice* const advice = FindAdvice(problem.code, problem.message, problem.place);
        ASSERT_NE(advice, nullptr) << problem.code << ' ' << problem.message;
        if (!sample.advice.empty()) {
            EXPECT_EQ(problem.advice, advice->text) << problem.message;
        }
        for (const DocumentProblem& told : check.problems)
            reached.insert(FindAdvice(told.code, told.message, told.place));
    }
    reached.insert(
        FindAdvice(12, "The document takes more memory than there is.", {}));  // tests/hostile runs out of it
    const DocumentProblem unreadable = CheckDocument(plugin, "nowhere.pmml", false).problems.front();
    reached.insert(FindAdvice(unreadable.code, unreadable.message, unreadable.place));
    for (const Advice& advice : GetAdvices())
        EXPECT_TRUE(reached.contains(&advice)) << advice.code << ' ' << advice.message << ' ' << advice.element;
}

TEST_F(CheckAdvice, NamesTheRightFunction_WhereOnlyUpperAndLowerCaseDiffer) {
    const std::string document = Transforming(DerivedText("d", Apply("Uppercase", "<FieldRef field=\"colour\"/>")));
    EXPECT_EQ(Check(document).problems.front().advice,
              "Write \"uppercase\": names of functions are told apart by upper and lower case.");
}

TEST(FunctionSuggestion, LooksBehindThePrefixOfProducers) {
    EXPECT_THAT(SuggestFunction("The function \"x-Round\" is not known."), HasSubstr("built-in function \"round\""));
    EXPECT_THAT(SuggestFunction("The function \"x-guess\" is not known."), StartsWith("Define the function"));
    EXPECT_EQ(SuggestFunction("The function \"guess\" is not known."), "");
    EXPECT_EQ(SuggestFunction("The function \"x-\" is not known."), "");
    EXPECT_EQ(SuggestFunction("none"), "");
}

TEST_F(CheckAdvice, IsTheLastResort_WhereNothingIsKnown) {
    EXPECT_THAT(AdviceFor(5, "Something else.", {}), StartsWith("Mend the document at this place"));
    EXPECT_THAT(AdviceFor(99, "", {}), StartsWith("Mend the document at this place"));
}

TEST_F(CheckAdvice, IsToAdapt_WhereThatHelps) {
    const std::string newer = Fruit("<DataDictionary>", "<DataDictionary><Extension/>");
    EXPECT_EQ(Check(newer).problems.front().advice,
              "Read it with --adapt: the document is fine but for what that rewrites.");
    EXPECT_EQ(Check(Replace(newer, "0.001", "0")).problems.front().advice,
              "Read it with --adapt, which rewrites this. What is wrong then: Threshold can't be zero!");
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
