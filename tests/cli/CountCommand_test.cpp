#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/CommandTest.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class CountCommand : public CommandTest {
protected:
    /// Counts a table from standard input into a file.
    CommandResult Count(const std::string& table, std::vector<std::string> options,
                        const std::string& document = "counted.pmml") const {
        options.insert(options.begin(), "count");
        options.insert(options.end(), {"-o", document});
        return Run(options, table);
    }
    std::string ReadFile(const std::string& name) const { return ReadWholeFile(folder / name); }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder / name); }
    std::string Counted(const std::string& table, const std::vector<std::string>& options) const {
        const CommandResult result = Count(table, options);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return ReadFile("counted.pmml");
    }
};

constexpr const char* fruits = "colour,weight,fruit\nred,120,apple\ngreen,110.5,apple\n,150,pear\ngreen,160,pear\n";

TEST_F(CountCommand, WritesADocumentThatScoresAndVerifies) {
    EXPECT_EQ(Count(fruits, {"--target", "fruit", "--threshold", "0.01", "--cutpoints", "weight=115,140"}).exitStatus,
              0);
    EXPECT_EQ(Run({"verify", "counted.pmml"}).exitStatus, 0);
    EXPECT_THAT(Run({"check", "counted.pmml"}).out, StartsWith("counted.pmml: single classifier, sound\n"));
    EXPECT_THAT(Run({"check", "counted.pmml", "--rule", "standard"}).exitStatus, 0);
    // Priors 2.01; red: 1.01 of 2.02 apples, 0.01 of 1.02 pears; at 120: 1.01 of 2.03 and 0.01 of 2.03.
    const double apple = (1.01 / 2.02) * (1.01 / 2.03);
    const double pear = (0.01 / 1.02) * (0.01 / 2.03);
    const std::vector<std::string> scores =
        Lines(Run({"score", "counted.pmml", "--only-scores"}, "colour,weight\nred,120\n").out);
    ASSERT_EQ(scores.size(), 2U);
    EXPECT_EQ(scores[0], "predicted_fruit,confidence,probability_apple,probability_pear");
    EXPECT_THAT(scores[1], StartsWith("apple,"));
    EXPECT_NEAR(std::stod(scores[1].substr(6)), apple / (apple + pear), 1e-12);
}

TEST_F(CountCommand, WritesTheSameToStandardOutput_AndSaysWhatItLeftOut) {
    const CommandResult result = Run({"count", "--target", "fruit"}, fruits);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, Counted(fruits, {"--target", "fruit"}));
    EXPECT_THAT(Lines(result.err), ElementsAre("note: standard input: 1 of 4 rows (25 %) have no value of \"colour\""));
    EXPECT_THAT(Run({"count", "--target", "fruit", "--quiet"}, fruits).err, IsEmpty());
}

TEST_F(CountCommand, LeavesIdentifiersOut_UnlessTheyAreAskedFor) {
    std::string table = "id,name,price,t\n";
    for (int i = 0; i < 40; ++i) {
        table += std::to_string(i) + ",n" + std::to_string(i) + "," + std::to_string(i) + ".5," +
                 (i % 2 == 0 ? "x\n" : "y\n");
    }
    const CommandResult result = Run({"count", "--target", "t"}, table);
    EXPECT_THAT(result.err, HasSubstr("left out: \"id\": nearly all of its values are different"));
    EXPECT_THAT(result.err, HasSubstr("left out: \"name\": nearly all of its values are different"));
    EXPECT_THAT(result.out, Not(HasSubstr("<BayesInput fieldName=\"id\">")));
    EXPECT_THAT(result.out, HasSubstr("<BayesInput fieldName=\"price\">"));
    EXPECT_THAT(Counted(table, {"--target", "t", "--inputs", "id,name"}), HasSubstr("<BayesInput fieldName=\"name\">"));
    EXPECT_THAT(Counted(table, {"--target", "t", "--categorical", "id"}), HasSubstr("<PairCounts value=\"39\">"));
}

TEST_F(CountCommand, CountsRareTextsTogether_AndUnknownOnesWithThem) {
    const std::string table = "a,t\nb,x\nb,y\nb,x\nc,y\nd,y\n";
    EXPECT_THAT(Count(table, {"--target", "t", "--min-count", "2"}).err,
                HasSubstr("2 of 3 values of \"a\" are rare and counted as one, \"(other)\": 2 of 5 rows (40 %)"));
    EXPECT_EQ(Run({"verify", "counted.pmml"}).exitStatus, 0);
    const auto scoreOf = [this](const std::string& value) {
        return Lines(Run({"score", "counted.pmml", "--only-scores"}, "a\n" + value + "\n").out).at(1);
    };
    EXPECT_THAT(scoreOf("c"), StartsWith("y,"));
    EXPECT_EQ(scoreOf("c"), scoreOf("never seen"));
    EXPECT_THAT(scoreOf("b"), StartsWith("x,"));
}

TEST_F(CountCommand, MakesASetOfSubModels) {
    const std::string table =
        "age,offer,accepted\n20,card,no\n60,card,yes\n30,loan,yes\n40,loan,no\n50,loan,no\n,card,yes\n";
    Counted(table, {"--target", "accepted", "--sub-models-by", "offer", "--cutpoints", "age=45"});
    EXPECT_EQ(Run({"verify", "counted.pmml"}).exitStatus, 0);
    const CommandResult scored = Run({"score", "counted.pmml", "--only-scores"}, "age\n20\n");
    // By a third, one over the rows of each: priors 4/3 and 7/3, and 7/3 and 4/3; the lower bin 4/5 and 1/5, and 1/2
    // and 4/5, for "no" and "yes".
    EXPECT_EQ(Lines(scored.out).at(0), "score_card,score_loan");
    const std::string scores = Lines(scored.out).at(1);
    EXPECT_NEAR(std::stod(scores), 7.0 / 23.0, 1e-12);
    EXPECT_NEAR(std::stod(scores.substr(scores.find(',') + 1)), 32.0 / 67.0, 1e-12);
    EXPECT_THAT(Run({"count", "--target", "offer", "--sub-models-by", "age"}, table + "1,bond,no\n").err,
                EndsWith("that of sub-models must have two\n"));
}

TEST_F(CountCommand, AddsToADocument_WhichMayBeReplaced) {
    const std::string more = "colour,weight,fruit\nblue,1,plum\nred,145,pear\n";
    const std::vector<std::string> options = {"--target",      "fruit",       "--inputs",
                                              "weight,colour", "--cutpoints", "weight=115,140"};
    const std::string whole = Counted(std::string(fruits) + more.substr(more.find('\n') + 1), options);
    Counted(fruits, options);
    const CommandResult added = Count(more, {"--into", "counted.pmml"});
    EXPECT_EQ(added.exitStatus, 0) << added.err;
    EXPECT_EQ(ReadFile("counted.pmml"), whole);
}

TEST_F(CountCommand, ForgetsAShareOfEarlierCounts) {
    Counted(fruits, {"--target", "fruit", "--inputs", "colour"});
    EXPECT_EQ(Count("colour,fruit\nred,apple\n", {"--into", "counted.pmml", "--forget", "0.5"}).exitStatus, 0);
    const std::string counted = ReadFile("counted.pmml");
    EXPECT_THAT(counted, HasSubstr("<TargetValueCount value=\"apple\" count=\"2\"/>"));
    EXPECT_THAT(counted, HasSubstr("<TargetValueCount value=\"pear\" count=\"1\"/>"));
    EXPECT_THAT(counted, HasSubstr("missingFreq=\"0.5\""));
    EXPECT_EQ(Run({"verify", "counted.pmml"}).exitStatus, 0);
}

TEST_F(CountCommand, MergesWhatWasCountedApart) {
    const std::string more = "colour,weight,fruit\nblue,1,plum\nred,145,pear\n";
    const std::vector<std::string> options = {"--target",      "fruit",       "--inputs",
                                              "weight,colour", "--cutpoints", "weight=115,140"};
    Count(fruits, options, "first.pmml");
    Count(more, options, "second.pmml");
    const CommandResult merged = Run({"merge", "second.pmml", "first.pmml"});
    EXPECT_EQ(merged.exitStatus, 0) << merged.err;
    EXPECT_EQ(merged.out, Counted(std::string(fruits) + more.substr(more.find('\n') + 1), options));
}

TEST_F(CountCommand, RefusesToAddWhatDiffers_ByTheDocumentsName) {
    Count(fruits, {"--target", "fruit", "--cutpoints", "weight=115"}, "first.pmml");
    const auto refusalOf = [this](const std::string& table, const std::vector<std::string>& options) {
        Count(table, options, "second.pmml");
        const CommandResult result = Run({"merge", "first.pmml", "second.pmml", "-o", "sum.pmml"});
        EXPECT_EQ(result.exitStatus, 3);
        EXPECT_FALSE(IsThere("sum.pmml"));
        return Lines(result.err).at(0);
    };
    const std::string begin = "second.pmml: error 12: The document cannot be added: ";
    EXPECT_EQ(refusalOf(fruits, {"--target", "fruit", "--cutpoints", "weight=116"}),
              begin + "\"weight\" has other cutpoints in it.");
    EXPECT_EQ(refusalOf(fruits, {"--target", "fruit", "--categorical", "weight"}),
              begin + "\"weight\" is counted as texts in it, and not in bins.");
    EXPECT_EQ(refusalOf(fruits, {"--target", "colour", "--cutpoints", "weight=115"}),
              begin + "its target is \"colour\", and not \"fruit\".");
    EXPECT_EQ(refusalOf(fruits, {"--target", "fruit", "--inputs", "colour"}),
              begin + "it has another number of inputs: 1, and not 2.");
    EXPECT_EQ(refusalOf(fruits, {"--target", "fruit", "--cutpoints", "weight=115", "--threshold", "3"}),
              begin + "its threshold is another one.");
}

TEST_F(CountCommand, RefusesDocumentsThatHoldMoreThanCounts) {
    EXPECT_THAT(Run({"merge", "model.pmml"}).err,
                HasSubstr("error 12: This is not what counting a table writes, and would be lost or counted wrongly."));
    const std::string counted = Counted(fruits, {"--target", "fruit", "--inputs", "colour"});
    for (const auto& [part, instead] : std::vector<std::pair<std::string, std::string>>{
             {"invalidValueTreatment=\"asIs\"", "invalidValueTreatment=\"asMissing\""},
             {"<BayesInputs>", "<Targets/><BayesInputs>"},
             {"modelName=\"fruit\"", "modelName=\"mine\""},
             {"<Value value=\"green\"/>", "<Value value=\"green\" displayValue=\"Green\"/>"},
             {"<Value value=\"pear\"/>", ""},
             {"missingFreq=\"1\"", ""}}) {
        ASSERT_THAT(counted, HasSubstr(part));
        folder.Write("changed.pmml", Replace(counted, part, instead));
        EXPECT_EQ(Run({"merge", "changed.pmml"}).exitStatus, 3) << part;
    }
}

TEST_F(CountCommand, RefusesTablesThatMakeNoModel_AndWritesNothing) {
    const auto refusalOf = [this](const std::string& table, std::vector<std::string> options) {
        options.insert(options.end(), {"--target", "t"});
        const CommandResult result = Count(table, options);
        EXPECT_EQ(result.exitStatus, 1) << table;
        EXPECT_FALSE(IsThere("counted.pmml"));
        return result.err;
    };
    EXPECT_EQ(refusalOf("a,t\n1,x\n2,x\n", {}),
              "error: standard input: the target \"t\" has only one value, \"x\": there is nothing to tell apart\n");
    EXPECT_EQ(refusalOf("a,t\n1,\n", {}),
              "error: standard input: the target \"t\" has no value in any row: there is nothing to tell apart\n");
    EXPECT_EQ(refusalOf("a,t\n,x\n,y\n", {}),
              "error: standard input: the table has no column that could be an input; left out: \"a\": no row has a "
              "value of it\n");
    EXPECT_EQ(refusalOf("a,t\n1,x\nz,y\n", {"--cutpoints", "a=3"}),
              "error: standard input:3: column \"a\": \"z\" is no number\n");
    EXPECT_EQ(refusalOf("a,t\nb,x\n\x02,y\n", {}),
              "error: standard input:3: column \"a\": \"?\" holds a character that no document can hold\n");
}

TEST_F(CountCommand, RefusesOptionsThatMakeNoSense) {
    const auto problemOf = [this](const std::vector<std::string>& options) {
        const CommandResult result = Count(fruits, options);
        EXPECT_EQ(result.exitStatus, 2);
        return Lines(result.err).at(0);
    };
    EXPECT_EQ(problemOf({}), "error: --target is required");
    EXPECT_EQ(problemOf({"--target", "fruit", "--bins", "1"}), "error: --bins: '1' is no whole number from 2 to 1000");
    EXPECT_EQ(problemOf({"--target", "fruit", "--threshold", "0"}), "error: --threshold: '0' is no number above 0");
    EXPECT_EQ(problemOf({"--target", "fruit", "--cutpoints", "weight=3,2"}),
              "error: --cutpoints: 'weight=3,2': the numbers must grow, each one above the one before");
    EXPECT_EQ(problemOf({"--target", "fruit", "--inputs", "a,,b"}),
              "error: --inputs: 'a,,b' is no list of names with commas between");
    EXPECT_EQ(problemOf({"--target", "fruit", "--forget", "0.5"}), "error: --forget: it needs --into");
    EXPECT_EQ(problemOf({"--into", "x.pmml", "--bins", "3"}), "error: --bins: the document of --into says it");
    EXPECT_EQ(Lines(Run({"count", "cases.csv", "--target", "a", "-o", "cases.csv"}).err).at(0),
              "error: --output: 'cases.csv' is the table");
}

}  // namespace
}  // namespace nbscore::test
