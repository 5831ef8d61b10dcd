#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string header = "colour,weight,predicted_fruit,confidence,probability_apple,probability_pear";

class ScoreCommandTest : public CommandTest {
protected:
    /// Runs a call that must go well without a word, and answers its lines.
    std::vector<std::string> Score(const std::vector<std::string>& arguments, const std::string& input = "") const {
        const CommandResult result = Run(arguments, input);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
        return Lines(result.out);
    }
};

}  // namespace

TEST_F(ScoreCommandTest, WritesInputColumnsAndScores) {
    EXPECT_THAT(Score({"score", "model.pmml", "cases.csv"}),
                ElementsAre(header, StartsWith("red,200,apple,0."), StartsWith("green,100,pear,0.")));
}

TEST_F(ScoreCommandTest, ReadsStandardInput_WhenNoTableOrADashIsGiven) {
    const std::vector<std::string> expected = Score({"score", "model.pmml", "cases.csv"});
    EXPECT_EQ(Score({"score", "model.pmml"}, fruitCases), expected);
    EXPECT_EQ(Score({"score", "model.pmml", "-"}, fruitCases), expected);
}

TEST_F(ScoreCommandTest, TakesColumnsInAnyOrderAndPassesOthersOn) {
    EXPECT_THAT(Score({"score", "model.pmml"}, "note,weight,colour\n\"a,b\",100,green\n"),
                ElementsAre("note,weight,colour,predicted_fruit,confidence,probability_apple,probability_pear",
                            StartsWith("\"a,b\",100,green,pear,")));
}

TEST_F(ScoreCommandTest, WritesScoresOnly_WhenAsked) {
    EXPECT_THAT(Score({"score", "model.pmml", "cases.csv", "--only-scores"}),
                ElementsAre("predicted_fruit,confidence,probability_apple,probability_pear", StartsWith("apple,0."),
                            StartsWith("pear,0.")));
}

TEST_F(ScoreCommandTest, WritesThePredictionAlone_WhenAsked) {
    EXPECT_THAT(Score({"score", "model.pmml", "cases.csv", "--prediction-only"}),
                ElementsAre("colour,weight,predicted_fruit", "red,200,apple", "green,100,pear"));
}

TEST_F(ScoreCommandTest, PutsThePrefixBeforeAddedColumnsOnly) {
    EXPECT_THAT(Score({"score", "model.pmml", "cases.csv", "--prediction-only", "--prefix", "my_"}),
                ElementsAre("colour,weight,my_predicted_fruit", "red,200,apple", "green,100,pear"));
}

TEST_F(ScoreCommandTest, ReadsAndWritesWithTheDelimiter) {
    for (const auto& [option, delimiter] : {std::pair{";", ";"}, {"tab", "\t"}, {"\\t", "\t"}, {"|", "|"}}) {
        const std::string input = std::string("colour") + delimiter + "weight\nred" + delimiter + "200\n";
        EXPECT_THAT(Score({"score", "model.pmml", "--prediction-only", "--delimiter", option}, input),
                    ElementsAre(std::string("colour") + delimiter + "weight" + delimiter + "predicted_fruit",
                                std::string("red") + delimiter + "200" + delimiter + "apple"));
    }
}

TEST_F(ScoreCommandTest, WritesJsonLines_WhenAsked) {
    const std::vector<std::string> lines = Score({"score", "model.pmml", "cases.csv", "--format", "jsonl"});
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], StartsWith("{\"prediction\":"));
    EXPECT_THAT(lines[0], HasSubstr("\"apple\""));
    EXPECT_EQ(Score({"score", "model.pmml", "cases.csv", "--format", "jsonl", "--only-scores"}), lines);
    EXPECT_THAT(Score({"score", "model.pmml", "cases.csv", "--format", "csv"}).front(), header);
}

TEST_F(ScoreCommandTest, TakesBadNumbersAsMissing_WhenAsked) {
    const std::vector<std::string> bad =
        Score({"score", "model.pmml", "--only-scores", "--bad-values", "missing"}, "colour,weight\nred,heavy\n");
    const std::vector<std::string> empty = Score({"score", "model.pmml", "--only-scores"}, "colour,weight\nred,\n");
    EXPECT_EQ(bad, empty);
}

TEST_F(ScoreCommandTest, StopsAtABadNumber_WhenToldToOrNot) {
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--bad-values", "stop"}}) {
        std::vector<std::string> arguments = {"score", "model.pmml"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const CommandResult result = Run(arguments, "colour,weight\nred,heavy\n");
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.err, StartsWith("error: standard input:2: "));
        EXPECT_THAT(result.err, HasSubstr("weight"));
        EXPECT_THAT(result.err, HasSubstr("heavy"));
    }
}

TEST_F(ScoreCommandTest, TakesAFieldThatTheTableLacksAsMissing_WhenAsked) {
    const std::vector<std::string> lacking =
        Score({"score", "model.pmml", "--only-scores", "--allow-missing-fields"}, "colour\nred\n");
    EXPECT_EQ(lacking, Score({"score", "model.pmml", "--only-scores"}, "colour,weight\nred,\n"));
}

TEST_F(ScoreCommandTest, AcceptsATableWithoutCases_WhenAsked) {
    EXPECT_THAT(Score({"score", "model.pmml", "--allow-empty"}, "colour,weight\n"), ElementsAre(header));
}

TEST_F(ScoreCommandTest, TakesAnotherPlugin) {
    EXPECT_EQ(Score({"score", "model.pmml", "cases.csv", "--plugin", NBSCORE_PLUGIN}),
              Score({"score", "model.pmml", "cases.csv"}));
}

TEST_F(ScoreCommandTest, Fails_WhenThePluginIsNone) {
    for (const char* plugin : {"nothere.so", "cases.csv"}) {
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "--plugin", plugin});
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("error: "));
        EXPECT_THAT(result.err, HasSubstr(plugin));
    }
}

TEST_F(ScoreCommandTest, IsNoDifferent_WhenQuiet) {
    EXPECT_EQ(Score({"score", "model.pmml", "cases.csv", "--quiet"}), Score({"score", "model.pmml", "cases.csv"}));
}

TEST_F(ScoreCommandTest, TakesNamesThatBeginWithADash_AfterTwoDashes) {
    folder.Write("-model.pmml", fruitDocument);
    EXPECT_EQ(Score({"score", "--", "-model.pmml", "cases.csv"}), Score({"score", "model.pmml", "cases.csv"}));
}

TEST_F(ScoreCommandTest, TakesNamesBeyondAscii) {
    folder.Write("modell-\xc3\xa4\xe6\xa8\xa1.pmml", fruitDocument);
    EXPECT_EQ(Score({"score", "modell-\xc3\xa4\xe6\xa8\xa1.pmml", "cases.csv"}).size(), 3U);
}

TEST_F(ScoreCommandTest, DoesNotDependOnTheLocale) {
    CommandCall call = MakeCall({"score", "model.pmml", "cases.csv"});
    call.environment["LC_ALL"] = "de_DE.UTF-8";
    EXPECT_EQ(RunCommand(call).out, Run(call.arguments).out);
}

TEST_F(ScoreCommandTest, WarnsOnce_WhenTheArithmeticBreaksDown) {
    folder.Write("model.pmml", Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"1e308\""));
    const CommandResult result =
        Run({"score", "model.pmml", "cases.csv", "--quiet"}, "colour,weight\nred,200\nred,200\n");
    EXPECT_EQ(result.exitStatus, 0);
    ASSERT_EQ(Lines(result.err).size(), 1U);
    EXPECT_THAT(result.err, StartsWith("warning: cases.csv:2: a probability came out as no number or infinite"));
    EXPECT_EQ(Lines(result.out).size(), 3U);
}

}  // namespace nbscore::test
