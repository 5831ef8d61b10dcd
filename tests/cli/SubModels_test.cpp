// Self-learning documents through the built command.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CommandTest.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class SubModelsTest : public CommandTest {
protected:
    SubModelsTest() {
        folder.Write("offers.pmml", offersDocument);
        folder.Write("none.pmml", noOffersDocument);
    }

    /// Runs a call that must go well without a warning, and answers its lines.
    std::vector<std::string> Score(std::vector<std::string> options) const {
        options.insert(options.begin(), {"score", "offers.pmml", "-"});
        const CommandResult result = Run(options, "id,colour\n1,red\n2,\n");
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_THAT(result.err, StartsWith("note: standard input:3: 1 of 2 rows (50 %) has no value"));
        return Lines(result.out);
    }
    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& complaint) const {
        const CommandResult result = Run(arguments, fruitCases);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(complaint));
    }
};

// With t = 1/8 the priors of "card" are 33/66 each; red gives it (1/8 + 3) / (2/8 + 4) against (1/8 + 1) / (2/8 + 4).
// "plan", without inputs, gives its raw prior (1/4 + 2) / (2/4 + 4) = 1/2.
TEST_F(SubModelsTest, GiveAColumnEach_ByDefault) {
    EXPECT_THAT(Score({}),
                ElementsAre("id,colour,score_card,score_plan", "1,red,0.7352941176470589,0.5", "2,,0.5,0.5"));
}

TEST_F(SubModelsTest, GiveARowEach_WhenLong) {
    EXPECT_THAT(Score({"--long"}), ElementsAre("id,colour,model,score,assessment_mean,assessment_std_dev",
                                               "1,red,card,0.7352941176470589,0.5,8", "1,red,plan,0.5,,",
                                               "2,,card,0.5,0.5,8", "2,,plan,0.5,,"));
}

TEST_F(SubModelsTest, GiveTheBestFirst_WhenAsked) {
    EXPECT_THAT(Score({"--best", "1", "--only-scores"}),
                ElementsAre("best_1_model,best_1_score", "card,0.7352941176470589", "card,0.5"));
    EXPECT_THAT(Score({"--best", "5", "--long", "--prediction-only"}),
                ElementsAre("id,colour,model,score", "1,red,card,0.7352941176470589", "1,red,plan,0.5", "2,,card,0.5",
                            "2,,plan,0.5"));
}

TEST_F(SubModelsTest, GiveAList_AsJson) {
    EXPECT_THAT(
        Score({"--format", "jsonl", "--best", "1"}),
        ElementsAre("{\"models\": [{\"name\": \"card\", \"score\": 0.7352941176470589, \"assessment_mean\": 0.5, "
                    "\"assessment_std_dev\": 8}]}",
                    "{\"models\": [{\"name\": \"card\", \"score\": 0.5, \"assessment_mean\": 0.5, "
                    "\"assessment_std_dev\": 8}]}"));
}

TEST_F(SubModelsTest, AreDisplayed) {
    const CommandResult result = Run({"display", "offers.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("Begin Display of SelfLearningModel.\nInput variable names: colour False.\n"));
    EXPECT_THAT(result.out, HasSubstr("\nThreshold value = 0.125 Only prediction? Encoders: \n"));
    EXPECT_THAT(result.out, HasSubstr("\nThreshold value = 0.25 Only prediction? Encoders: \n"));
}

TEST_F(SubModelsTest, GiveCasesWithoutScores_WhenThereAreNone) {
    const CommandResult result = Run({"score", "none.pmml", "cases.csv"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, fruitCases);
    EXPECT_EQ(result.err, "note: none.pmml: the model has no sub-models: there are no scores\n");
    EXPECT_EQ(Run({"score", "none.pmml", "cases.csv", "--quiet"}).err, "");
}

TEST_F(SubModelsTest, HaveOptionsOfTheirOwn_ThatASingleClassifierRefuses) {
    ExpectRefused({"score", "model.pmml", "--long"},
                  "--long: it is for sets of sub-models, and 'model.pmml' holds a single classifier");
    ExpectRefused({"score", "model.pmml", "--best", "2"},
                  "--best: it is for sets of sub-models, and 'model.pmml' holds a single classifier");
}

TEST_F(SubModelsTest, RefuseOptionsThatMakeNoSense) {
    for (const std::string number : {"0", "-1", "1.5", "x", "99999999999"}) {
        ExpectRefused({"score", "offers.pmml", "--best=" + number}, "'" + number + "' is no whole number above 0");
    }
    ExpectRefused({"score", "offers.pmml", "--long", "--format", "jsonl"},
                  "--long: it shapes the rows of a table, and --format jsonl has none");
}

}  // namespace
}  // namespace nbscore::test
