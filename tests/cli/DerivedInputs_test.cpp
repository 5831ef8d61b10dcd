#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* derivedFields = R"(
  <TransformationDictionary>
    <DerivedField name="density" optype="continuous" dataType="double">
      <Apply function="/"><FieldRef field="weight"/><FieldRef field="size" mapMissingTo="2"/></Apply>
    </DerivedField>
    <DerivedField name="size" optype="continuous" dataType="double"><FieldRef field="volume"/></DerivedField>
    <DerivedField name="unused" optype="continuous" dataType="double"><FieldRef field="price"/></DerivedField>
  </TransformationDictionary>)";

/// The model of fruits, with the weight by volume in the place of the weight.
std::string DocumentOfDensity() {
    std::string text = Replace(fruitDocument, "</DataDictionary>",
                               "<DataField name=\"volume\" optype=\"continuous\" dataType=\"double\"/>"
                               "<DataField name=\"price\" optype=\"continuous\" dataType=\"double\"/>"
                               "</DataDictionary>" +
                                   std::string(derivedFields));
    text = Replace(text, "<MiningField name=\"weight\"/>",
                   "<MiningField name=\"weight\"/><Extension extender=\"scoring.nbscore\" name=\"DerivedFields\">"
                   "<MiningField name=\"density\"/></Extension>");
    text = Replace(text, "<BayesInput fieldName=\"weight\">", "<BayesInput fieldName=\"density\">");
    return Replace(text, "<Discretize field=\"weight\">", "<Discretize field=\"density\">");
}

class DerivedInputsTest : public CommandTest {
protected:
    DerivedInputsTest() { folder.Write("density.pmml", DocumentOfDensity()); }

    CommandResult Score(const std::string& cases, const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments = {"score", "density.pmml", "--only-scores"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Run(arguments, cases);
    }
};

TEST_F(DerivedInputsTest, NeedTheColumnsThatTheyAreComputedFrom) {
    EXPECT_EQ(Score("colour,weight,volume\nred,400,2\n").exitStatus, 0);
    const CommandResult misspelt = Score("colour,Weight,Volume\nred,400,2\n");
    EXPECT_EQ(misspelt.exitStatus, 1);
    EXPECT_EQ(misspelt.out, "");
    EXPECT_THAT(misspelt.err, HasSubstr("standard input:1: the header lacks the columns \"weight\", \"volume\", which "
                                        "the model needs"));
}

TEST_F(DerivedInputsTest, AreComputedWithMissingFields_WhenThatIsAllowed) {
    const CommandResult lacking = Score("colour,weight\nred,400\n", {"--allow-missing-fields"});
    EXPECT_EQ(lacking.exitStatus, 0);
    EXPECT_EQ(lacking.out, Score("colour,weight,volume\nred,400,\n").out);
    EXPECT_NE(lacking.out, Score("colour,weight,volume\nred,400,4\n").out);
}

TEST_F(DerivedInputsTest, AreVerifiedWithMissingFields_WhenTheTestCasesLeaveThemOut) {
    const std::string prediction = Score("colour,weight,volume\nred,200,\n").out;
    const std::string confidence = prediction.substr(prediction.find("\napple,") + 7).substr(0, 10);
    folder.Write(
        "verified.pmml",
        Replace(DocumentOfDensity(), "</NaiveBayesModel>",
                "<ModelVerification><VerificationFields><VerificationField field=\"colour\"/><VerificationField "
                "field=\"weight\"/><VerificationField field=\"confidence\"/></VerificationFields><InlineTable>"
                "<row><colour>red</colour><weight>200</weight><confidence>" +
                    confidence + "</confidence></row></InlineTable></ModelVerification></NaiveBayesModel>"));
    const CommandResult result = Run({"verify", "verified.pmml"});
    EXPECT_EQ(result.exitStatus, 0) << result.out << result.err;
    EXPECT_THAT(result.out, HasSubstr("1 row, 1 cell checked, all agree"));
}

TEST_F(DerivedInputsTest, AreReportedByCheck_WithTheFieldsTheyAreComputedFrom) {
    const CommandResult result = Run({"check", "density.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("    \"weight\": continuous, numbers, an input, read by derived inputs\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"volume\": continuous, numbers, read by derived inputs\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"price\": continuous, numbers\n"));
    EXPECT_THAT(result.out, HasSubstr("    \"density\": derived from \"weight\", \"size\", continuous, numbers\n"));
    EXPECT_THAT(result.out, Not(HasSubstr("remark")));

    const CommandResult json = Run({"check", "density.pmml", "--format", "json"});
    const auto fields = nlohmann::json::parse(json.out).at("documents").at(0).at("fields");
    EXPECT_EQ(fields.at(3).at("name"), "volume");
    EXPECT_EQ(fields.at(3).at("read_by_derived_inputs"), true);
    EXPECT_EQ(fields.at(4).at("read_by_derived_inputs"), false);
    EXPECT_EQ(fields.at(5).at("derived_from"), (std::vector<std::string>{"weight", "size"}));
    EXPECT_EQ(fields.at(5).at("read_by_derived_inputs"), nullptr);
}

TEST_F(DerivedInputsTest, AreNoReasonToKeepAnActiveField_ThatNoneOfThemIsComputedFrom) {
    folder.Write("density.pmml", Replace(DocumentOfDensity(), "<MiningField name=\"weight\"/>",
                                         "<MiningField name=\"price\"/><MiningField name=\"volume\"/>"));
    const CommandResult result = Run({"check", "density.pmml"});
    EXPECT_THAT(result.out, HasSubstr("remark: The field \"price\" is active, but no input uses it"));
    EXPECT_THAT(result.out, Not(HasSubstr("The field \"volume\"")));
}

/// The model of fruits as newer producers write it: the derived fields stand in the model.
std::string DocumentOfLocalDensity() {
    std::string text = DocumentOfDensity();
    const std::size_t begin = text.find("<TransformationDictionary>");
    const std::string end = "</TransformationDictionary>";
    const std::size_t length = text.find(end) + end.size() - begin;
    const std::string fields = text.substr(begin, length);
    text.erase(begin, length);
    const std::string local = Replace(Replace(fields, "<Tra", "<LocalTra"), "</Tra", "</LocalTra");
    text =
        Replace(text, "<BayesInputs>", Replace(Replace(local, "Dictionary", "s"), "Dictionary", "s") + "<BayesInputs>");
    return Replace(text,
                   "<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\"><MiningField name=\"density\"/>"
                   "</Extension>",
                   "");
}

TEST_F(DerivedInputsTest, AreReadFromTheModel_WhenItIsAdapted) {
    const std::string cases = "colour,weight,volume\nred,400,2\ngreen,290,\n";
    const CommandResult expected = Score(cases);
    folder.Write("density.pmml", DocumentOfLocalDensity());
    EXPECT_EQ(Score(cases).exitStatus, 3);
    const CommandResult adapted = Score(cases, {"--adapt"});
    EXPECT_EQ(adapted.exitStatus, 0);
    EXPECT_EQ(adapted.out, expected.out);
    EXPECT_THAT(adapted.err, HasSubstr("note: density.pmml:23:5: adapted: the derived field \"density\" is moved from "
                                       "LocalTransformations to the TransformationDictionary\n"));
    EXPECT_THAT(adapted.err, Not(HasSubstr("unused")));
    EXPECT_THAT(Run({"check", "density.pmml"}).out, HasSubstr("do: Read it with --adapt"));
}

TEST_F(DerivedInputsTest, AreRefusedWhereTheyStood_WhenTheyAreMoved) {
    folder.Write("density.pmml", Replace(DocumentOfLocalDensity(), "function=\"/\"", "function=\"divided\""));
    const CommandResult result = Score("colour,weight,volume\nred,400,2\n", {"--adapt"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.err, HasSubstr("density.pmml:24:7: error 11: "));
}

TEST_F(DerivedInputsTest, GiveTheSameWithBlanksInWhatTheyRead_WhenTheDocumentIsAdapted) {
    // Red fruits are rounder than their colour tells: the expression compares it, blank and all.
    std::string text = Replace(DocumentOfDensity(), "<FieldRef field=\"weight\"/>",
                               "<Apply function=\"if\"><Apply function=\"equal\"><FieldRef field=\"colour\"/>"
                               "<Constant dataType=\"string\"> red</Constant></Apply><Constant>1000</Constant>"
                               "<Constant>100</Constant></Apply>");
    text = Replace(Replace(text, "<Value value=\"red\"/>", "<Value value=\" red\"/>"), "<PairCounts value=\"red\">",
                   "<PairCounts value=\" red\">");
    folder.Write("density.pmml", Replace(text, "<Value value=\"pear\"/>", "<Value value=\" pear\"/>"));
    const std::string cases = "colour,weight,volume\n red,1,2\nred,1,2\ngreen,1,2\n";
    const CommandResult adapted = Score(cases, {"--adapt"});
    EXPECT_THAT(adapted.err,
                HasSubstr("note: density.pmml:6:7: not adapted: the blanks around the values of \"colour\" "
                          "stay: the derived field \"density\" reads it, and may tell texts with blanks "
                          "from others\n"));
    EXPECT_THAT(adapted.err, HasSubstr(": adapted: the blanks around value \" pear\" are taken off\n"));
    folder.Write("density.pmml", text);
    EXPECT_EQ(adapted.out, Score(cases).out);

    const auto json = nlohmann::json::parse(Run({"check", "density.pmml", "--adapt", "--format", "json"}).out);
    EXPECT_EQ(json.at("documents").at(0).at("adaptations").size(), 1U);
    EXPECT_EQ(json.at("documents").at(0).at("adaptations").at(0).at("made"), false);
    EXPECT_THAT(Run({"check", "density.pmml", "--adapt"}).out, HasSubstr("density.pmml:6:7: not adapted: the blanks"));
}

TEST_F(DerivedInputsTest, AreVerified_WhenAdaptingTakesBlanksOffTheirNames) {
    const std::string testCases =
        "<ModelVerification><VerificationFields><VerificationField field=\" weight\" column=\"weight\"/>"
        "<VerificationField field=\"volume\" column=\"volume\"/><VerificationField field=\"fruit\"/>"
        "</VerificationFields><InlineTable><row><weight>200</weight><volume>1</volume><fruit>apple</fruit></row>"
        "</InlineTable></ModelVerification></NaiveBayesModel>";
    std::string text = Replace(DocumentOfDensity(), "</NaiveBayesModel>", testCases);
    text = Replace(text, "<DataField name=\"weight\"", "<DataField name=\" weight\"");
    folder.Write("blank.pmml", Replace(text, "<DataField name=\"volume\"", "<DataField name=\"volume \""));
    const CommandResult result = Run({"verify", "blank.pmml", "--adapt"});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "1 row, 1 cell checked, all agree\n");
}

}  // namespace
}  // namespace nbscore::test
