// What the command says, after a run, of values and rows that its answers do not show.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class RunFindings : public CommandTest {
protected:
    /// What is said of a table of the fruits.
    std::vector<std::string> NotesOn(const std::string& table, const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"score", "model.pmml", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandResult result = Run(arguments, table);
        EXPECT_EQ(result.exitStatus, 0);
        return Lines(result.err);
    }
    std::string ReadFile(const std::string& name) const { return ReadWholeFile(folder / name); }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder / name); }
    nlohmann::json ReadSummary() const { return nlohmann::json::parse(ReadFile("summary.json")); }
};

TEST_F(RunFindings, AreNoneOfValuesThatAreKnownOrMissing) {
    EXPECT_THAT(NotesOn("colour,weight\nred,\n,5\ngreen,1e9\n"), ElementsAre());
}

TEST_F(RunFindings, AreUnknownValues_OnceAFieldWithCountShareFirstValueAndLine) {
    EXPECT_THAT(NotesOn("colour,weight\nred,1\nblue,1\nblack,1\nred,1\n"),
                ElementsAre("note: standard input:3: 2 of 4 rows (50 %) have a value of \"colour\" that the model does "
                            "not know, the first \"blue\""));
}

TEST_F(RunFindings, HintAtAKnownValue_WhereTheFirstUnknownOneIsOnlyWrittenAnotherWay) {
    const auto hintAt = [this](const std::string& value) { return NotesOn("colour,weight\n" + value + ",1\n").at(0); };
    EXPECT_THAT(hintAt("Red"), EndsWith("the first \"Red\"; the model knows \"red\""));
    EXPECT_THAT(hintAt("green "), EndsWith("the first \"green \"; the model knows \"green\""));
    EXPECT_THAT(hintAt("reds"), EndsWith("the first \"reds\""));
    folder.Write("model.pmml", Replace(Replace(fruitDocument, "<Value value=\"red\"/>", "<Value value=\"6\"/>"),
                                       "<PairCounts value=\"red\">", "<PairCounts value=\"6\">"));
    EXPECT_THAT(hintAt("6.0"), EndsWith("the first \"6.0\"; the model knows \"6\""));
    EXPECT_THAT(hintAt("6.1"), EndsWith("the first \"6.1\""));
    folder.Write("model.pmml", Replace(Replace(fruitDocument, "<Value value=\"red\"/>", "<Value value=\"6.0\"/>"),
                                       "<PairCounts value=\"red\">", "<PairCounts value=\"6.0\">"));
    EXPECT_THAT(hintAt("6"), EndsWith("the first \"6\"; the model knows \"6.0\""));
}

TEST_F(RunFindings, HintAtAKnownValue_WhereALaterUnknownOneIsWrittenAnotherWay) {
    const std::string table = "colour,weight\nblue,1\nblack,1\nRed,1\nGREEN,1\n";
    EXPECT_THAT(NotesOn(table, {"--summary", "summary.json"}),
                ElementsAre(EndsWith("the first \"blue\"; the model knows \"red\", which the \"Red\" in line 4 may "
                                     "mean")));
    const nlohmann::json colour = ReadSummary().at("fields").at(0);
    EXPECT_EQ(colour.at("first_value"), "blue");
    EXPECT_EQ(colour.at("misspelt_value"), "Red");
    EXPECT_EQ(colour.at("known_spelling"), "red");
    EXPECT_THAT(
        NotesOn(table, {"--rule", "standard"}),
        ElementsAre(EndsWith("4 invalid values, the first \"blue\" of \"colour\"; the model knows \"red\", which "
                             "the \"Red\" in line 4 may mean")));
}

TEST_F(RunFindings, TellWhatADerivedInputIsComputedFrom_WhereItHasNoValue) {
    const std::string gap = Replace(fruitDocument, "leftMargin=\"150\"", "leftMargin=\"160\"");
    folder.Write("model.pmml", gap);
    EXPECT_THAT(NotesOn("colour,weight\nred,100\nred,\nred,155\nred,200\n",
                        {"--rule", "standard", "--summary", "summary.json"}),
                ElementsAre("note: standard input:4: 1 of 4 rows (25 %) has a value of \"weight\" that the model does "
                            "not know, the first computed from \"155\""));
    EXPECT_EQ(ReadSummary().at("fields").at(1).at("first_value"), "155");

    std::string text = Replace(fruitDocument, "<NaiveBayesModel ", R"(<TransformationDictionary>
    <DerivedField name="shade" optype="categorical" dataType="string">
      <Apply function="if"><Apply function="equal"><FieldRef field="paint"/><FieldRef field="coat"/></Apply>
        <FieldRef field="paint"/></Apply></DerivedField>
  </TransformationDictionary>
  <NaiveBayesModel )");
    text = Replace(text, "<DataField name=\"weight\"",
                   "<DataField name=\"paint\" optype=\"categorical\" dataType=\"string\"/><DataField name=\"coat\" "
                   "optype=\"categorical\" dataType=\"string\"><Value value=\"?\" property=\"missing\"/></DataField>"
                   "<DataField name=\"weight\"");
    text = Replace(text, "<MiningField name=\"colour\"/>", "<MiningField name=\"paint\"/><MiningField name=\"coat\"/>");
    text = Replace(text, "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"shade\">");
    folder.Write("model.pmml", text);
    const std::string table = "paint,coat,weight\nred,red,1\nred,,1\nred,?,1\nred,green,1\n";
    for (const std::vector<std::string>& rule :
         {std::vector<std::string>{"--rule", "standard"}, {"--rule", "smoothed", "--adapt"}}) {
        EXPECT_THAT(NotesOn(table, rule),
                    testing::Contains("note: standard input:5: 1 of 4 rows (25 %) has a value of \"shade\" that the "
                                      "model does not know, the first computed from \"red, green\""))
            << rule[1];
    }
}

TEST_F(RunFindings, SayWhereAnUnknownValueIsNotTheTables) {
    folder.Write("model.pmml", Replace(fruitDocument, "<MiningField name=\"colour\"/>",
                                       "<MiningField name=\"colour\" missingValueReplacement=\"grey\"/>"));
    EXPECT_THAT(NotesOn("colour,weight\n,100\n", {"--rule", "standard"}),
                ElementsAre(EndsWith("the first \"grey\", which the document puts in place of what the table has")));
}

TEST_F(RunFindings, SayThatRowsWithoutAResultHaveTheProbabilitiesOfTheTargets) {
    folder.Write("model.pmml", Replace(fruitDocument, "<BayesInputs>", R"(<Targets><Target field="fruit">
      <TargetValue value="apple" priorProbability="0.75"/><TargetValue value="pear" priorProbability="0.25"/>
    </Target></Targets><BayesInputs>)"));
    EXPECT_THAT(NotesOn("colour,weight\nblue,100\nred,100\n", {"--rule", "standard"}),
                ElementsAre(HasSubstr("1 of 2 rows (50 %) has no result but the probabilities that the document's "
                                      "Targets give such rows, this one the first: 1 invalid value, the first ")));
}

TEST_F(RunFindings, SuggestADelimiter_WhereTheColumnsMayBeMissing) {
    EXPECT_THAT(NotesOn("colour;weight\nred;1\n", {"--allow-missing-fields"}),
                ElementsAre(EndsWith("the counts of the target alone; the table's columns seem to stand between "
                                     "semicolons: try --delimiter \";\"")));
    EXPECT_THAT(NotesOn("colours,weights\nred,1\n", {"--allow-missing-fields"}),
                ElementsAre(EndsWith("the counts of the target alone")));
}

TEST_F(RunFindings, AreRowsWithoutAnyKnownValue) {
    EXPECT_THAT(NotesOn("colour,weight\nred,1\n,\nblue,\n"),
                ElementsAre(StartsWith("note: standard input:4: 1 of 3 rows (33.3 %) has a value of \"colour\" that "),
                            StartsWith("note: standard input:3: 2 of 3 rows (66.7 %) have no value that the model "
                                       "knows, this one the first: ")));
}

TEST_F(RunFindings, CountRememberedAnswersToo_OnAnyNumberOfThreads) {
    std::string table = "colour,weight\nred,1\n";
    for (int i = 0; i < 300'000; ++i)
        table += i % 2 == 0 ? "blue,1\n" : "red,1\n";
    table += "black,1\n";
    folder.Write("long.csv", table);
    for (const std::string threads : {"1", "2", "4"}) {
        const CommandResult result = Run({"score", "model.pmml", "long.csv", "-o", "scores.csv", "--threads", threads});
        EXPECT_EQ(result.err,
                  "note: long.csv:3: 150001 of 300002 rows (50 %) have a value of \"colour\" that the model does not "
                  "know, the first \"blue\"\n");
    }
}

TEST_F(RunFindings, NeverRoundAShareToNothingOrAll) {
    std::string table = "colour,weight\nblue,1\n";
    for (int i = 0; i < 2000; ++i)
        table += "red,1\n";
    EXPECT_THAT(NotesOn(table).at(0), HasSubstr("1 of 2001 rows (less than 0.1 %) has "));
    table = "colour,weight\nred,1\n";
    for (int i = 0; i < 2000; ++i)
        table += "blue,1\n";
    EXPECT_THAT(NotesOn(table).at(0), HasSubstr("2000 of 2001 rows (more than 99.9 %) have "));
}

TEST_F(RunFindings, AreOfValuesThatNoSubModelKnows_InASet) {
    folder.Write("model.pmml", offersDocument);
    EXPECT_THAT(NotesOn("colour\nred\nblue\n"),
                ElementsAre(HasSubstr(":3: 1 of 2 rows (50 %) has a value of \"colour\" that the model does not know, "
                                      "the first \"blue\""),
                            HasSubstr(":3: 1 of 2 rows (50 %) has no value that the model knows")));
}

TEST_F(RunFindings, TellDerivedValues_WhereInputsAreComputed) {
    std::string text = Replace(fruitDocument, "<NaiveBayesModel ", R"(<TransformationDictionary>
    <DerivedField name="shade" optype="categorical" dataType="string">
      <Apply function="lowercase"><FieldRef field="paint"/></Apply></DerivedField>
  </TransformationDictionary>
  <NaiveBayesModel )");
    text = Replace(text, "<DataField name=\"weight\"",
                   "<DataField name=\"paint\" optype=\"categorical\" dataType=\"string\"/><DataField name=\"weight\"");
    text = Replace(text, "<MiningField name=\"colour\"/>", "<MiningField name=\"paint\"/>");
    text = Replace(text, "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"shade\">");
    folder.Write("model.pmml", text);
    EXPECT_THAT(NotesOn("paint,weight\nRED,1\nBLUE,1\n", {"--adapt"}),
                testing::Contains("note: standard input:3: 1 of 2 rows (50 %) has a value of \"shade\" that the model "
                                  "does not know, the first \"blue\""));
}

TEST_F(RunFindings, AreRowsWithoutAResult_ByTheStandardsRule) {
    const std::vector<std::string> standard = {"--rule", "standard", "--summary", "summary.json"};
    EXPECT_THAT(NotesOn("colour,weight\nred,200\nRed,200\n,200\nblue,1\nred,100\n", standard),
                ElementsAre("note: standard input:3: 2 of 5 rows (40 %) have no result, this one the first: 2 invalid "
                            "values, the first \"Red\" of \"colour\"; the model knows \"red\""));
    const nlohmann::json summary = ReadSummary();
    EXPECT_EQ(summary.at("rows_without_result"), nlohmann::json({{"invalid_value", 2}, {"nothing_possible", 0}}));
    EXPECT_EQ(summary.at("first_invalid_value"),
              nlohmann::json({{"field", "colour"}, {"value", "Red"}, {"line", 3}, {"known_spelling", "red"}}));
    folder.Write("model.pmml", Replace(Replace(Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"0\""),
                                               "count=\"90\"", "count=\"0\""),
                                       "<TargetValueCount value=\"pear\" count=\"20\"/>",
                                       "<TargetValueCount value=\"pear\" count=\"0\"/>"));
    EXPECT_THAT(NotesOn("colour,weight\nred,100\nred,200\n", standard),
                ElementsAre("note: standard input:3: 1 of 2 rows (50 %) has no result, this one the first: 1 row for "
                            "which no category is possible"));
    EXPECT_EQ(
        Run({"score", "model.pmml", "-", "--rule", "standard", "--strict"}, "colour,weight\nred,200\n").exitStatus, 1);
}

TEST_F(RunFindings, HintAtAKnownValue_ByTheStandardsRuleToo) {
    const std::string free = Replace(fruitDocument, "<MiningField name=\"colour\"/>",
                                     "<MiningField name=\"colour\" invalidValueTreatment=\"asIs\"/>");
    folder.Write("model.pmml", free);
    EXPECT_THAT(NotesOn("colour,weight\nRed,200\n", {"--rule", "standard"}),
                ElementsAre(EndsWith("the first \"Red\"; the model knows \"red\"")));
}

TEST_F(RunFindings, AreNotToldUnderQuiet) {
    EXPECT_THAT(NotesOn("colour,weight\nblue,\n", {"--quiet"}), ElementsAre());
}

TEST_F(RunFindings, AreErrorsUnderStrict_AndTheResultStaysAsItWas) {
    folder.Write("cases.csv", "colour,weight\nblue,1\n");
    folder.Write("scores.csv", "as before");
    for (const std::string quiet : {"--strict", "--quiet"}) {
        const CommandResult result = Run(
            {"score", "model.pmml", "cases.csv", "-o", "scores.csv", "--strict", quiet, "--summary", "summary.json"});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.err,
                  "error: cases.csv:2: 1 of 1 row (100 %) has a value of \"colour\" that the model does not know, the "
                  "first \"blue\"\n");
        EXPECT_EQ(ReadFile("scores.csv"), "as before");
        EXPECT_EQ(ReadSummary().at("fields").at(0).at("unknown"), 1);
    }
    EXPECT_EQ(Run({"score", "model.pmml", "-", "-o", "scores.csv", "--strict"}, fruitCases).exitStatus, 0);
    EXPECT_NE(ReadFile("scores.csv"), "as before");
}

TEST_F(RunFindings, AreInTheSummary_WithZerosWhereThereAreNone) {
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "--summary", "summary.json", "--quiet"}).err, "");
    const nlohmann::json nothing = nullptr;
    EXPECT_EQ(ReadSummary(), nlohmann::json({{"document", "model.pmml"},
                                             {"table", "cases.csv"},
                                             {"rows", 2},
                                             {"rows_without_result", {{"invalid_value", 0}, {"nothing_possible", 0}}},
                                             {"first_invalid_value", nothing},
                                             {"rows_without_known_value", 0},
                                             {"fields",
                                              {{{"name", "colour"},
                                                {"unknown", 0},
                                                {"first_value", nothing},
                                                {"first_line", nothing},
                                                {"misspelt_value", nothing},
                                                {"known_spelling", nothing}},
                                               {{"name", "weight"},
                                                {"unknown", 0},
                                                {"first_value", nothing},
                                                {"first_line", nothing},
                                                {"misspelt_value", nothing},
                                                {"known_spelling", nothing}}}}}));
}

TEST_F(RunFindings, AreInTheSummary_AsTheyAre) {
    Run({"score", "model.pmml", "-", "--summary", "summary.json"}, "colour,weight\nred,1\nRed,1\nblue,\n");
    const nlohmann::json summary = ReadSummary();
    EXPECT_EQ(summary.at("table"), "standard input");
    EXPECT_EQ(summary.at("rows_without_known_value"), 1);
    const nlohmann::json colour = summary.at("fields").at(0);
    EXPECT_EQ(colour.at("unknown"), 2);
    EXPECT_EQ(colour.at("first_value"), "Red");
    EXPECT_EQ(colour.at("first_line"), 3);
    EXPECT_EQ(colour.at("known_spelling"), "red");
}

TEST_F(RunFindings, AreInNoSummary_WhenTheTableIsRefused) {
    EXPECT_EQ(Run({"score", "model.pmml", "-", "--summary", "summary.json"}, "colour,weight\nred,heavy\n").exitStatus,
              1);
    EXPECT_FALSE(IsThere("summary.json"));
}

TEST_F(RunFindings, SummaryIsAFileOfItsOwn) {
    const auto refusalOf = [this](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"score", "model.pmml", "cases.csv", "--summary"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandResult result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.out, "");
        return result.err;
    };
    EXPECT_THAT(refusalOf({"model.pmml"}), HasSubstr("'model.pmml' is the model's own document"));
    EXPECT_THAT(refusalOf({"./cases.csv"}), HasSubstr("'./cases.csv' is the table"));
    EXPECT_THAT(refusalOf({"new.csv", "-o", "./new.csv"}), HasSubstr("'new.csv' is the result"));
    EXPECT_THAT(refusalOf({"-"}), HasSubstr("'-' is no file"));
    EXPECT_EQ(ReadFile("cases.csv"), fruitCases);
    EXPECT_FALSE(IsThere("new.csv"));
}

#ifndef _WIN32
TEST_F(RunFindings, SummaryIsNotWhatStandardInputIsReadFrom) {
    CommandCall call =
        MakeCall({"-c", std::string("'") + NBSCORE_COMMAND + "' score model.pmml --summary ./cases.csv <cases.csv"});
    call.program = "/bin/sh";
    const CommandResult result = RunCommand(call);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.err, HasSubstr("--summary: './cases.csv' is the table"));
    EXPECT_EQ(ReadFile("cases.csv"), fruitCases);
}

// A device that is always full, which takes the summary without a complaint until the end.
TEST_F(RunFindings, SummaryThatCannotBeWrittenLeavesTheResultAsItWas) {
    folder.Write("scores.csv", "as before");
    const CommandResult result =
        Run({"score", "model.pmml", "cases.csv", "--summary", "/dev/full", "-o", "scores.csv"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "error: cannot write /dev/full: No space left on device\n");
    EXPECT_EQ(ReadFile("scores.csv"), "as before");
}
#endif

TEST_F(RunFindings, SummaryThatCannotBeWrittenIsRefused_BeforeTheFirstRow) {
    const CommandResult result = Run({"score", "model.pmml", "cases.csv", "--summary", "nowhere/summary.json"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.out, "");
}

}  // namespace
}  // namespace nbscore::test
