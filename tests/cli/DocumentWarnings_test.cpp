// What the command says of documents whose answers would be far from what they mean, and what the plug-in says beside a
// refusal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The document of fruits, whose input weight stands in an Extension.
std::string WithInputInExtension() {
    const std::string text =
        Replace(fruitDocument, "<BayesInput fieldName=\"weight\">", "<Extension><BayesInput fieldName=\"weight\">");
    return Replace(text, "</BayesInputs>", "</Extension></BayesInputs>");
}

const std::string leftOut =
    "1 input stands in <Extension> and is not read: \"weight\". Answers rest on the input \"colour\" alone.";

const std::string adviceBehind =
    "all inputs stand in BayesInputs itself, those of continuous fields with a Discretize and PairCounts: "
    "distributions "
    "cannot be read. Or score the document with --rule standard, which heeds this.\n";

class DocumentWarnings : public CommandTest {
protected:
    void WriteModel(const std::string& text) const { folder.Write("model.pmml", text); }
    nlohmann::json CheckAsJson(const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {"check", "model.pmml", "--format", "json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return nlohmann::json::parse(Run(arguments).out).at("documents").at(0);
    }
};

TEST_F(DocumentWarnings, AreGivenByEveryVerbThatReadsTheModel_EvenUnderQuiet) {
    WriteModel(WithInputInExtension());
    const std::string warning =
        "warning: model.pmml:36:18: " + leftOut + "\n  do: Do not use the scores until " + adviceBehind;
    const CommandResult scored = Run({"score", "model.pmml", "cases.csv"});
    EXPECT_EQ(scored.exitStatus, 0);
    EXPECT_EQ(scored.err, warning);
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "--quiet"}).err, warning);
    EXPECT_EQ(Run({"display", "model.pmml"}).err, warning);
    EXPECT_THAT(Run({"verify", "model.pmml"}).err, StartsWith(warning));
}

TEST_F(DocumentWarnings, HintAtTheStandardsRule_OnlyWhereThatCanScoreTheDocument) {
    WriteModel(Replace(WithInputInExtension(), "<BayesInputs>", "<Foo/><BayesInputs>"));
    const std::string err = Run({"score", "model.pmml", "cases.csv"}).err;
    EXPECT_THAT(err, HasSubstr("warning: model.pmml:21:5: <Foo> in <NaiveBayesModel> is not read, and could change"));
    EXPECT_THAT(err, HasSubstr("distributions cannot be read.\n"));
    EXPECT_THAT(err, Not(HasSubstr("--rule standard")));
}

TEST_F(DocumentWarnings, StandBeforeTheRemarksOfACheck_WhichDoesNotCallTheDocumentSound) {
    WriteModel(Replace(WithInputInExtension(), "<DataDictionary>", "<DataDictionary numberOfFields=\"7\">"));
    const CommandResult result = Run({"check", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, StartsWith("model.pmml: single classifier, can be scored, but see the warnings\n"));
    EXPECT_THAT(result.out, HasSubstr("model.pmml:36:18: warning: " + leftOut +
                                      "\n  at /PMML/NaiveBayesModel[1]/BayesInputs[1]/Extension[1]/BayesInput[1]\n"
                                      "  do: Do not use the scores until "));
    const auto check = CheckAsJson({});
    EXPECT_EQ(check.at("sound"), false);
    EXPECT_EQ(check.at("can_be_scored"), true);
    EXPECT_EQ(check.at("problems").at(0).at("severity"), "warning");
    EXPECT_EQ(check.at("problems").at(0).at("message"), leftOut);
    EXPECT_EQ(check.at("problems").at(1).at("severity"), "remark");
}

TEST_F(DocumentWarnings, SayThatTheStandardsRuleTakesAThresholdOf0_AndNotToWriteAnother) {
    WriteModel(Replace(WithInputInExtension(), "threshold=\"0.001\"", "threshold=\"0\""));
    const CommandResult result = Run({"check", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.out,
                HasSubstr("error 5: Threshold can't be zero!\n  at /PMML/NaiveBayesModel[1]\n  it reads "
                          "<NaiveBayesModel functionName=\"classification\" threshold=\"0\">\n  do: Score the "
                          "document by the standard's rule, which takes a threshold of 0 as it stands: "
                          "--rule standard, or GiveMyStandardTranslator in C++. With another threshold its "
                          "answers would be others.\nmodel.pmml:36:18: warning: " +
                          leftOut));
    EXPECT_EQ(result.out.find("small threshold"), std::string::npos);
}

TEST_F(DocumentWarnings, AreOfWhateverWouldChangeAnAnswer_AndSuchADocumentIsNeverCalledSound) {
    const std::string weight = "<MiningField name=\"weight\"";
    const std::string target = "<BayesInputs>";
    const std::vector<std::pair<std::string, std::string>> changes = {
        {weight, weight + " missingValueReplacement=\"1\""},
        {weight, weight + " missingValueTreatment=\"returnInvalid\""},
        {weight, weight + " outliers=\"asExtremeValues\" lowValue=\"1\""},
        {weight, weight + " optype=\"categorical\""},
        {"<MiningField name=\"colour\"", "<MiningField name=\"colour\" invalidValueTreatment=\"returnInvalid\""},
        {"closure=\"openClosed\" rightMargin", "closure=\"openOpen\" rightMargin"},
        {target, "<Targets><Target><TargetValue value=\"pear\" priorProbability=\"0.5\"/></Target></Targets>" + target},
        {target, "<Output><OutputField name=\"o\" feature=\"residual\"/></Output>" + target},
        {"threshold=", "isScorable=\"false\" threshold="},
    };
    for (const auto& [piece, replacement] : changes) {
        WriteModel(Replace(fruitDocument, piece, replacement));
        const CommandResult scored = Run({"score", "model.pmml", "cases.csv", "--quiet"});
        EXPECT_EQ(scored.exitStatus, 0);
        EXPECT_THAT(scored.err, AllOf(StartsWith("warning: model.pmml:"), HasSubstr("\n  do: "))) << replacement;
        EXPECT_THAT(Run({"check", "model.pmml"}).out, Not(HasSubstr("single classifier, sound"))) << replacement;
        EXPECT_EQ(CheckAsJson({}).at("sound"), false) << replacement;
    }
}

TEST_F(DocumentWarnings, AreNotGivenOfWhatTheStandardsRuleReads) {
    WriteModel(WithInputInExtension());
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "--rule", "standard"}).err, "");
}

TEST_F(DocumentWarnings, AreGivenOfADocumentWithoutAnyInputElsewhere_BesideItsRefusal) {
    std::string text = fruitDocument;
    const std::size_t begin = text.find("<BayesInputs>");
    const std::size_t end = text.find("</BayesInputs>");
    text = text.substr(0, begin) + "<BayesInputs><Extension>" + text.substr(begin + 13, end - begin - 13) +
           "</Extension>" + text.substr(end);
    WriteModel(text);
    EXPECT_THAT(
        Run({"check", "model.pmml"}).out,
        AllOf(HasSubstr("error 1: At least one <BayesInputs>"),
              HasSubstr("warning: 2 inputs stand in <Extension> and are not read: \"colour\", \"weight\". Answers rest "
                        "on the counts of BayesOutput alone: they are the same for every case.")));
}

/// The document of fruits, whose continuous input has no bins, in a schema that a newer producer wrote.
std::string WithoutBins() {
    const std::size_t begin = fruitDocument.find("        <DerivedField name=\"weight_bin\"");
    const std::size_t end = fruitDocument.find("</DerivedField>\n") + 16;
    return fruitDocument.substr(0, begin) + fruitDocument.substr(end);
}

const std::string placedNotice = "The first element in the BayesInput of a continuous field is <PairCounts>.";

TEST_F(DocumentWarnings, WhatThePluginSaysBesideARefusalIsANote_WithItsPlaceAndNotUnderQuiet) {
    WriteModel(WithoutBins());
    const CommandResult scored = Run({"score", "model.pmml", "cases.csv"});
    EXPECT_EQ(scored.exitStatus, 3);
    EXPECT_THAT(scored.err, StartsWith("note: model.pmml:37:9: " + placedNotice + "\nmodel.pmml:37:9: error 6: "));
    EXPECT_THAT(Run({"score", "model.pmml", "cases.csv", "--quiet"}).err, StartsWith("model.pmml:37:9: error 6: "));
    EXPECT_THAT(Run({"display", "model.pmml"}).err, StartsWith("note: model.pmml:37:9: "));
    EXPECT_THAT(Run({"verify", "model.pmml", "--format", "json"}).err, StartsWith("model.pmml:37:9: error 6: "));
    EXPECT_THAT(Run({"score", "model.pmml", "cases.csv", "--format", "jsonl"}).err,
                StartsWith("model.pmml:37:9: error 6: "));
}

TEST_F(DocumentWarnings, WhatThePluginSaysBesideARefusalIsARemarkOfACheck_OnceAndNowhereElse) {
    // The Extension is the original's line 5, and adapting takes it out.
    WriteModel(Replace(WithoutBins(), "<DataDictionary>", "<DataDictionary><Extension\n/>"));
    for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--adapt"}}) {
        std::vector<std::string> arguments = {"check", "model.pmml"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(Run(arguments).err, "");
    }
    const auto check = CheckAsJson({"--adapt"});
    ASSERT_EQ(check.at("problems").size(), 2U);
    EXPECT_EQ(check.at("problems").at(0).at("code"), 6);
    EXPECT_EQ(check.at("problems").at(1).at("severity"), "remark");
    EXPECT_EQ(check.at("problems").at(1).at("message"), placedNotice);
    EXPECT_EQ(check.at("problems").at(1).at("line"), 38);
    EXPECT_EQ(check.at("problems").at(1).at("column"), 9);
    EXPECT_THAT(Run({"check", "model.pmml", "--adapt"}).out,
                HasSubstr("model.pmml:38:9: remark: " + placedNotice + "\n  at /PMML/"));
    const CommandResult scored = Run({"score", "model.pmml", "cases.csv", "--adapt"});
    EXPECT_THAT(scored.err, HasSubstr("\nnote: model.pmml:38:9: " + placedNotice + "\nmodel.pmml:38:9: error 6: "));
    EXPECT_EQ(scored.err.find(placedNotice), scored.err.rfind(placedNotice));
}

}  // namespace
}  // namespace nbscore::test
