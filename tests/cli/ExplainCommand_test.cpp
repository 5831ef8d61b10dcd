// nbscore explain, and the reasons of nbscore score, through the built command.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"
#include "cli/ParcelDocument.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class ExplainTest : public CommandTest {
protected:
    ExplainTest() {
        folder.Write("parcels.pmml", parcelDocument);
        folder.Write("offers.pmml", offersDocument);
    }

    CommandResult Explain(std::vector<std::string> options, const std::string& table = fruitCases) const {
        options.insert(options.begin(), {"explain", "model.pmml", "-"});
        return Run(options, table);
    }
    void ExpectRefused(const std::vector<std::string>& arguments, int exitStatus, const std::string& complaint,
                       const std::string& table = fruitCases) const {
        const CommandResult result = Run(arguments, table);
        EXPECT_EQ(result.exitStatus, exitStatus);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(complaint));
    }
};

// Both fruits have 100 cases. Pears against apples: red weighs ln((10.001 / 100.002) / (90.001 / 100.002)), and
// heavy weighs ln(20.001 / 80.001).
TEST_F(ExplainTest, ShowsATermForEachPredictor) {
    const CommandResult result = Explain({"--row", "1"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "standard input:2: row 1\n"
              "  pear (probability 0.0270) against apple (0.9730): log-odds -3.583 nats\n"
              "  predictor   value  weight  against average\n"
              "  (prior)             0.000            0.000\n"
              "  colour      red    -2.197           -2.197\n"
              "  weight      200    -1.386           -1.386\n"
              "  (log-odds)         -3.583\n"
              "\n");
}

TEST_F(ExplainTest, WritesATableWhoseColumnsAddUp) {
    const CommandResult result = Explain({"--format", "csv", "--row", "2"});
    EXPECT_EQ(result.exitStatus, 0);
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_EQ(lines[0],
              "row,line,state,category,against,term,predictor,value,use,weight,against_average,average,lowest,highest");
    EXPECT_THAT(lines[1], StartsWith("2,3,explained,pear,apple,prior,,,,0,"));
    EXPECT_THAT(lines[2], StartsWith("2,3,explained,pear,apple,predictor,colour,green,known,2.19"));
    EXPECT_THAT(lines[4], StartsWith("2,3,explained,pear,apple,sum,,,,3.58"));
}

TEST_F(ExplainTest, WritesWhatReplayTakes_AsJson) {
    const CommandResult result = Explain({"--format", "jsonl"});
    EXPECT_EQ(result.exitStatus, 0);
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_THAT(lines, SizeIs(2));
    const CommandResult scored = Run({"score", "model.pmml", "-", "--format", "jsonl"}, fruitCases);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const nlohmann::json evidence = nlohmann::json::parse(lines[i]);
        double apple = evidence["priors"]["apple"];
        double pear = evidence["priors"]["pear"];
        for (const nlohmann::json& predictor : evidence["predictors"]) {
            apple *= predictor["factors"]["apple"].get<double>();
            pear *= predictor["factors"]["pear"].get<double>();
        }
        EXPECT_EQ(evidence["probabilities"]["pear"].get<double>(), pear / (apple + pear));
        EXPECT_EQ(evidence["probabilities"], nlohmann::json::parse(Lines(scored.out)[i])["probabilities"]);
    }
}

TEST_F(ExplainTest, CountsInDecibans_WhenAsked) {
    const CommandResult nats = Explain({"--format", "jsonl", "--row", "1"});
    const CommandResult decibans = Explain({"--format", "jsonl", "--row", "1", "--units", "decibans"});
    const double inNats = nlohmann::json::parse(nats.out)["log_odds"];
    const double inDecibans = nlohmann::json::parse(decibans.out)["log_odds"];
    EXPECT_NEAR(inDecibans, 10.0 * inNats / std::log(10.0), 1e-14);
    EXPECT_THAT(decibans.out, HasSubstr(R"("unit": "decibans")"));
}

TEST_F(ExplainTest, SaysWhatIsLeftOutAndWhy) {
    const CommandResult result = Explain({}, "colour,weight\npink,200\n,100\npink,\n");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("  colour      pink    0.000            0.000  left out: unknown\n"));
    EXPECT_THAT(result.out, HasSubstr("left out: missing\n"));
    EXPECT_THAT(result.out, HasSubstr("  no predictor has a value that it knows: the case has its prior\n"));
}

TEST_F(ExplainTest, WeighsAgainstTheCategoryThatIsAskedFor) {
    const CommandResult result = Explain({"--against", "pear", "--row", "1"});
    EXPECT_THAT(result.out, HasSubstr("  apple (probability 0.9730) against pear (0.0270): log-odds 3.583 nats\n"));
    EXPECT_EQ(Explain({"--category", "apple", "--row", "1"}).out, result.out);
    EXPECT_EQ(Explain({"--category", "apple", "--against", "pear", "--row", "1"}).out, result.out);
}

TEST_F(ExplainTest, HasNoInfinities_WhenAFactorIsZero) {
    const std::vector<std::string> call = {"explain", "parcels.pmml", "-", "--rule", "standard", "--format", "jsonl"};
    const CommandResult result = Run(call, "colour,weight,stamp\nred,1,old\nyellow,1,old\n");
    EXPECT_EQ(result.exitStatus, 0);
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_THAT(lines, SizeIs(2));
    const nlohmann::json impossible = nlohmann::json::parse(lines[0]);
    EXPECT_TRUE(impossible["predictors"][0]["weight"].is_null());
    EXPECT_TRUE(impossible["log_odds"].is_null());
    EXPECT_NEAR(impossible["predictors"][1]["weight"].get<double>(), -2.0, 1e-12);
    const nlohmann::json invalid = nlohmann::json::parse(lines[1]);
    EXPECT_EQ(invalid["state"], "invalid value");
    EXPECT_EQ(invalid["field"], "colour");
    EXPECT_TRUE(invalid["probabilities"].is_null());
    EXPECT_TRUE(invalid["category"].is_null());
}

TEST_F(ExplainTest, ExplainsEverySubModel_OrTheOneThatIsAskedFor) {
    const CommandResult all = Run({"explain", "offers.pmml", "-", "--format", "csv"}, "colour\nred\n");
    EXPECT_EQ(all.exitStatus, 0);
    EXPECT_THAT(Lines(all.out)[0], StartsWith("row,line,model,state,"));
    EXPECT_THAT(all.out, HasSubstr("1,2,card,explained,"));
    EXPECT_THAT(all.out, HasSubstr("1,2,plan,nothing known,"));
    const CommandResult one =
        Run({"explain", "offers.pmml", "-", "--format", "csv", "--model", "plan"}, "colour\nred\n");
    EXPECT_THAT(one.out, Not(HasSubstr("card")));
    EXPECT_THAT(Lines(one.out), SizeIs(3));
}

TEST_F(ExplainTest, RefusesWhatDoesNotExist) {
    ExpectRefused({"explain", "model.pmml", "--against", "plum"}, 2,
                  "--against: 'plum' is no category of the target, which has apple, pear");
    ExpectRefused({"explain", "model.pmml", "--category", "pear", "--against", "pear"}, 2,
                  "--against: it names the category of --category");
    ExpectRefused({"explain", "model.pmml", "--model", "card"}, 2, "--model: it is for sets of sub-models");
    ExpectRefused({"explain", "offers.pmml", "--model", "cart"}, 2, "--model: 'cart' is no sub-model");
    ExpectRefused({"explain", "model.pmml", "--row", "0"}, 2, "--row: '0' is no whole number above 0");
    ExpectRefused({"explain", "model.pmml", "--row", "3"}, 1,
                  "standard input: there is no row 3: the table has 2 cases");
    ExpectRefused({"explain", "model.pmml"}, 1, "standard input: the table has a header and no cases",
                  "colour,weight\n");
    ExpectRefused({"explain", "model.pmml"}, 1, "standard input: the table is empty", "");
    ExpectRefused({"explain", "model.pmml", "--row", "1"}, 1, "standard input:2: ", "colour,weight\nred,heavy\n");
}

TEST_F(ExplainTest, TakesTheTableAsScoreDoes) {
    const CommandResult result =
        Explain({"--delimiter", ";", "--bad-values", "missing", "--allow-missing-fields", "--format", "csv"},
                "weight;x\nheavy;1\n");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("1;2;nothing known;pear;apple;predictor;weight;;missing;0;"));
    EXPECT_EQ(Explain({"--allow-empty"}, "colour,weight\n").exitStatus, 0);
}

TEST_F(ExplainTest, WritesAFile_AndMasksControlCharactersInText) {
    const CommandResult result = Explain({"-o", "why.txt"}, "colour,weight\n\"re\x1b[31md\",200\n");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(folder.Read("why.txt"), HasSubstr("re\\x1b[31md"));
}

TEST_F(ExplainTest, AddsReasonsToScores) {
    const CommandResult result = Run({"score", "model.pmml", "-", "--reasons", "2", "--only-scores"},
                                     "colour,weight\nred,200\nred,100\ngreen,100\n,100\n");
    EXPECT_EQ(result.exitStatus, 0);
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_EQ(lines[0],
              "predicted_fruit,confidence,probability_apple,probability_pear,reason_1_field,reason_1_value,"
              "reason_1_weight,reason_2_field,reason_2_value,reason_2_weight");
    EXPECT_THAT(lines[1], testing::ContainsRegex(",colour,red,-2.19.*,weight,200,-1.38.*$"));
    EXPECT_THAT(lines[2], testing::ContainsRegex(",colour,red,-2.19.*,,,$"));
    EXPECT_THAT(lines[3], testing::EndsWith(",,,,,,"));
    EXPECT_THAT(lines[4], testing::EndsWith(",colour,,0,,,"));
}

TEST_F(ExplainTest, AddsReasonsThatLift_AsJson_ByEitherRule) {
    const CommandResult smoothed = Run({"score", "model.pmml", "-", "--reasons", "1", "--reasons-that", "lift",
                                        "--format", "jsonl", "--prediction-only"},
                                       "colour,weight\nred,100\n");
    EXPECT_THAT(smoothed.out,
                testing::AllOf(testing::StartsWith("{\"prediction\": \"apple\", \"reasons\": [{\"field\": \"weight\", "
                                                   "\"value\": \"100\", \"weight\": 1.38"),
                               testing::EndsWith("}]}\n")));
    const CommandResult standard = Run({"score", "parcels.pmml", "-", "--reasons", "1", "--rule", "standard"},
                                       "colour,weight,stamp\nblue,1,old\n");
    EXPECT_EQ(standard.exitStatus, 0);
    EXPECT_THAT(Lines(standard.out)[0],
                testing::EndsWith("Predicted_kind,Probability_letter,reason_1_field,reason_1_value,reason_1_weight"));
    EXPECT_THAT(Lines(standard.out)[1],
                testing::AnyOf(testing::EndsWith(",weight,1,-2"), testing::HasSubstr(",weight,1,-2.")));
}

TEST_F(ExplainTest, RefusesReasons_WhenTheyAreNotOfASingleClassifier) {
    ExpectRefused({"score", "offers.pmml", "--reasons", "1"}, 2, "--reasons: it is for single classifiers");
    ExpectRefused({"score", "model.pmml", "--reasons-that", "lift"}, 2, "--reasons-that requires --reasons");
    ExpectRefused({"score", "model.pmml", "--reasons", "0"}, 2, "--reasons: '0' is no whole number from 1 to 1000");
    ExpectRefused({"score", "model.pmml", "--reasons", "1"}, 1, "reason_1_field",
                  "colour,weight,reason_1_field\nred,1,x\n");
}

}  // namespace
}  // namespace nbscore::test
