#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The text with this in place of the first occurrence of that.
std::string Replaced(std::string text, const std::string& that, const std::string& with) {
    return text.replace(text.find(that), that.size(), with);
}

class CheckCommandTest : public CommandTest {
protected:
    CheckCommandTest() {
        folder.Write("offers.pmml", offersDocument);
        folder.Write("newer.pmml",
                     Replaced(fruitDocument, "<DataDictionary>", "<DataDictionary><Extension name='by'/>"));
    }

    CommandResult Check(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "check");
        return Run(arguments);
    }
};

TEST_F(CheckCommandTest, DescribesASingleClassifier) {
    const CommandResult result = Check({"model.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("model.pmml: single classifier, sound\n  3 fields\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"colour\": categorical, texts, 2 declared values, an input\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"weight\": continuous, numbers, an input\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"fruit\": categorical, texts, 2 declared values, the target\n"));
    EXPECT_THAT(result.out, HasSubstr("  target \"fruit\": \"apple\", \"pear\"\n"));
    EXPECT_THAT(result.out, HasSubstr("inputs \"colour\" (2 values, count "));
    EXPECT_THAT(result.out, HasSubstr("\"weight\" (2 bins, count "));
}

TEST_F(CheckCommandTest, DescribesASet) {
    const CommandResult result = Check({"offers.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, StartsWith("offers.pmml: set of sub-models, sound\n"));
    EXPECT_THAT(result.out,
                HasSubstr("  2 sub-models\n    \"card\": threshold 0.125; target counts 4, 4; inputs \"colour\" "
                          "(2 values, count 8); mean 0.5; deviation 8\n    \"plan\": threshold 0.25; target "
                          "counts 4, 2; no inputs\n"));
}

TEST_F(CheckCommandTest, AdvisesWhatToDo_WhenADocumentIsRefused) {
    folder.Write("bad.pmml", Replaced(fruitDocument, "threshold=\"", "threshold=\"0\" was=\""));
    const CommandResult result = Check({"bad.pmml"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.out, StartsWith("bad.pmml: refused\nbad.pmml:"));
    EXPECT_THAT(
        result.out,
        HasSubstr(": error 5: Threshold can't be zero!\n  at /PMML/NaiveBayesModel[1]\n  it reads "
                  "<NaiveBayesModel functionName=\"classification\" threshold=\"0\" was=\"0.001\">\n  do: Score "
                  "the document by the standard's rule, which takes a threshold of 0 as it stands: --rule "
                  "standard, "));
}

TEST_F(CheckCommandTest, AdvisesToAdapt_WhereThatHelps) {
    const CommandResult refused = Check({"newer.pmml"});
    EXPECT_EQ(refused.exitStatus, 3);
    EXPECT_THAT(refused.out, HasSubstr("do: Read it with --adapt"));
    const CommandResult adapted = Check({"newer.pmml", "--adapt"});
    EXPECT_EQ(adapted.exitStatus, 0);
    EXPECT_THAT(adapted.out, HasSubstr(": adapted: <Extension> is left out: it means nothing for scoring\n"));
}

TEST_F(CheckCommandTest, ReportsADocumentThatIsReadButCannotBeScored) {
    folder.Write("twice.pmml", Replaced(fruitDocument, "<Value value=\"pear\"/>", "<Value value=\"apple\"/>"));
    const CommandResult result = Check({"twice.pmml"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.out, StartsWith("twice.pmml: single classifier, cannot be scored\n"));
    EXPECT_THAT(result.out,
                HasSubstr("twice.pmml: error 12: The target variable \"fruit\" declares the value \"apple\" "
                          "twice.\n  do: "));
}

TEST_F(CheckCommandTest, RemarksOnWhatIsOdd) {
    folder.Write("odd.pmml", Replaced(Replaced(offersDocument, "modelName=\"plan\"", "modelName=\"card\""),
                                      "<TargetValueCount value=\"yes\" count=\"2\"/>",
                                      "<TargetValueCount value=\"yes\" count=\"0\"/>"));
    const CommandResult result = Check({"odd.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("odd.pmml: remark: The target category \"yes\" of sub-model \"card\" was never "
                                      "counted: it is predicted by the threshold alone.\n  do: "));
    EXPECT_THAT(result.out,
                HasSubstr("odd.pmml: remark: 2 sub-models are called \"card\": their columns are told apart by "
                          "their index.\n  do: Give each its own modelName.\n"));
}

TEST_F(CheckCommandTest, RemarksOnWhatScoringIgnores) {
    folder.Write("ignored.pmml", Replaced(fruitDocument, "<MiningField name=\"weight\"",
                                          "<MiningField name=\"weight\" missingValueReplacement=\"1\""));
    const CommandResult result = Check({"ignored.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(
        result.out,
        HasSubstr("ignored.pmml:18:7: warning: missingValueReplacement \"1\" of the field \"weight\" is not used: a "
                  "missing value stays missing.\n  at /PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[2]\n"
                  "  do: Replace missing values in the table before scoring. Or score the document with --rule "
                  "standard, which heeds this.\n"));
    const auto json = nlohmann::json::parse(Check({"ignored.pmml", "--format", "json"}).out);
    const auto& problem = json.at("documents").at(0).at("problems").at(0);
    EXPECT_EQ(problem.at("severity"), "warning");
    EXPECT_EQ(problem.at("code"), nullptr);
    EXPECT_EQ(problem.at("line"), 18);
    EXPECT_EQ(problem.at("path"), "/PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[2]");
}

TEST_F(CheckCommandTest, RoundsSumsOfCounts) {
    std::string document = Replaced(fruitDocument, "value=\"apple\" count=\"90\"", "value=\"apple\" count=\"0.1\"");
    document = Replaced(document, "value=\"pear\" count=\"10\"", "value=\"pear\" count=\"0.2\"");
    document = Replaced(document, "value=\"apple\" count=\"10\"", "value=\"apple\" count=\"0.3\"");
    folder.Write("parts.pmml", Replaced(document, "value=\"pear\" count=\"90\"", "value=\"pear\" count=\"0.1\""));
    const auto json = nlohmann::json::parse(Check({"parts.pmml", "--format", "json"}).out);
    const auto& inputs = json.at("documents").at(0).at("model").at("classifiers").at(0).at("inputs");
    EXPECT_EQ(inputs.at(0).at("count"), 0.7);
}

TEST_F(CheckCommandTest, ShowsCountsRounded_AndAllTheirDigitsAsJson) {
    folder.Write("sums.pmml", Replaced(fruitDocument, "value=\"apple\" count=\"100\"",
                                       "value=\"apple\" count=\"100.00000000000045\""));
    EXPECT_THAT(Check({"sums.pmml"}).out, HasSubstr("target counts 100, 100;"));
    const auto json = nlohmann::json::parse(Check({"sums.pmml", "--format", "json"}).out);
    EXPECT_EQ(json.at("documents").at(0).at("model").at("classifiers").at(0).at("target_counts").at(0),
              100.00000000000045);
}

TEST_F(CheckCommandTest, RemarksWithThePlacesOfTheOriginal_WhenADocumentIsAdapted) {
    const std::string newer = Replaced(fruitDocument, "<DataDictionary>", "<DataDictionary><Extension name='by'/>");
    folder.Write("both.pmml", Replaced(newer, "<MiningField name=\"weight\"",
                                       "<MiningField name=\"weight\" missingValueReplacement=\"1\""));
    const CommandResult result = Check({"both.pmml", "--adapt"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out,
                HasSubstr("both.pmml:18:7: warning: missingValueReplacement \"1\" of the field \"weight\""));
}

TEST_F(CheckCommandTest, ChecksEveryDocument_EvenBehindABadOne) {
    folder.Write("bad.pmml", "<PMML>");
    const CommandResult result = Check({"model.pmml", "bad.pmml", "offers.pmml"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.out, HasSubstr("model.pmml: single classifier, sound\n"));
    EXPECT_THAT(result.out, HasSubstr("bad.pmml: refused\n"));
    EXPECT_THAT(result.out, HasSubstr("offers.pmml: set of sub-models, sound\n"));
}

TEST_F(CheckCommandTest, WritesJson_WhenAsked) {
    const CommandResult result = Check({"offers.pmml", "newer.pmml", "--format", "json"});
    EXPECT_EQ(result.exitStatus, 3);
    const auto json = nlohmann::json::parse(result.out).at("documents");
    EXPECT_EQ(json.at(0).at("kind"), "set of sub-models");
    EXPECT_EQ(json.at(0).at("sound"), true);
    EXPECT_EQ(json.at(0).at("model").at("classifiers").at(0).at("inputs").at(0).at("kind"), "texts");
    EXPECT_EQ(json.at(0).at("model").at("classifiers").at(0).at("assessment_std_dev"), 8);
    EXPECT_EQ(json.at(0).at("model").at("classifiers").at(1).at("assessment_mean"), nullptr);
    EXPECT_EQ(json.at(1).at("problems").at(0).at("code"), 1);
    EXPECT_EQ(json.at(1).at("problems").at(0).at("severity"), "error");
    EXPECT_EQ(json.at(1).at("model"), nullptr);
}

TEST_F(CheckCommandTest, RemarksOnATarget_ThatADerivedInputReads) {
    const auto withInputOver = [this](const std::string& field) {
        const std::string derived =
            "<TransformationDictionary><DerivedField name='d' optype='categorical' dataType='string'><FieldRef "
            "field='" +
            field + "'/></DerivedField></TransformationDictionary><NaiveBayesModel";
        const std::string input =
            "<BayesInputs><BayesInput fieldName='d'><PairCounts value='red'><TargetValueCounts>"
            "<TargetValueCount value='apple' count='1'/></TargetValueCounts></PairCounts></BayesInput>";
        folder.Write("derived.pmml",
                     Replaced(Replaced(fruitDocument, "<NaiveBayesModel", derived), "<BayesInputs>", input));
        return Check({"derived.pmml", "--adapt"}).out;
    };
    const char* const remark =
        "derived.pmml: remark: The target \"fruit\" is read by inputs: where the table has a column for it, the "
        "answers "
        "depend on that.\n";
    EXPECT_THAT(withInputOver("fruit"), HasSubstr(remark));
    EXPECT_THAT(withInputOver("colour"), AllOf(HasSubstr("sound\n"), Not(HasSubstr("remark: The target"))));
}

TEST_F(CheckCommandTest, ReportsTheApplicationsVersion_WhenTheDocumentHasOne) {
    folder.Write("told.pmml", Replaced(fruitDocument, "<Header/>", "<Header><Application version='7.5'/></Header>"));
    folder.Write("untold.pmml", Replaced(fruitDocument, "<Header/>", "<Header><Application name='A'/></Header>"));
    const CommandResult result = Check({"told.pmml", "untold.pmml", "model.pmml", "--format", "json"});
    const auto json = nlohmann::json::parse(result.out).at("documents");
    EXPECT_EQ(json.at(0).at("application_version"), "7.5");
    EXPECT_EQ(json.at(1).at("application_version"), nullptr);
    EXPECT_EQ(json.at(2).at("application_version"), nullptr);
}

TEST_F(CheckCommandTest, FailsWithStatusFour_WhenAFileCannotBeRead) {
    const CommandResult result = Check({"nowhere.pmml", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_THAT(result.out,
                StartsWith("nowhere.pmml: refused\nnowhere.pmml: error 4: The file \"nowhere.pmml\" cannot be "
                           "read"));
    EXPECT_THAT(result.out, HasSubstr("model.pmml: single classifier, sound\n"));
}

TEST_F(CheckCommandTest, PrintsNoControlCharacters) {
    folder.Write("evil.pmml", Replaced(offersDocument, "modelName=\"card\"", "modelName=\"a&#x9b;1m&#10;b\""));
    const CommandResult result = Check({"evil.pmml"});
    EXPECT_THAT(result.out, Not(HasSubstr("\x9b")));
    EXPECT_THAT(result.out, Not(HasSubstr("1m\n")));
}

TEST_F(CheckCommandTest, AdaptingIsReportedWhileScoring_UnlessQuiet) {
    const CommandResult told = Run({"score", "newer.pmml", "cases.csv", "--adapt"});
    EXPECT_EQ(told.exitStatus, 0);
    EXPECT_THAT(told.err, HasSubstr("note: newer.pmml:"));
    EXPECT_EQ(told.out, Run({"score", "model.pmml", "cases.csv"}).out);
    EXPECT_EQ(Run({"score", "newer.pmml", "cases.csv", "--adapt", "--quiet"}).err, "");
    EXPECT_EQ(Run({"display", "newer.pmml", "--adapt"}).exitStatus, 0);
    EXPECT_EQ(Run({"score", "newer.pmml", "cases.csv"}).exitStatus, 3);
}

}  // namespace
}  // namespace nbscore::test
