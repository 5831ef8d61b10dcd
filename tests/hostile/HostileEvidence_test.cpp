// Evidence and reasons of documents and tables that could take much memory and time, or whose names and values could
// break what is written.

#include <nlohmann/json.hpp>

#include "cli/FruitFields.h"
#include "hostile/HostileTest.h"
#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

using HostileEvidence = HostileTest;

/// Fruits whose colours have another name.
std::string WithField(const std::string& name) {
    std::string document = fruitDocument;
    for (const char* const quoted : {"name=\"colour\"", "fieldName=\"colour\""}) {
        const std::string attribute(quoted, std::string(quoted).find('=') + 1);
        for (std::size_t found = document.find(quoted); found != std::string::npos; found = document.find(quoted))
            document.replace(found, std::string(quoted).size(), attribute + "\"" + name + "\"");
    }
    return document;
}

TEST_F(HostileEvidence, IsReadAsItWasWritten_WhenNamesAndValuesHoldQuotesAndLineBreaks) {
    folder.Write("model.pmml", WithField("a &quot;b&quot;,&#10;c"));
    const std::string name = "a \"b\",\nc";
    folder.Write("cases.csv", "\"a \"\"b\"\",\nc\",weight\n\"no, \"\"such\"\"\nthing\",200\n");

    const CommandResult scored = RunLimited({"score", "model.pmml", "cases.csv", "--only-scores", "--reasons", "2"});
    EXPECT_EQ(scored.exitStatus, 0) << scored.err;
    EXPECT_THAT(scored.out, HasSubstr(",\"a \"\"b\"\",\nc\",\"no, \"\"such\"\"\nthing\",0"));

    const CommandResult listed =
        RunLimited({"score", "model.pmml", "cases.csv", "--format", "jsonl", "--reasons", "2"});
    ASSERT_THAT(Lines(listed.out), SizeIs(1)) << listed.err;
    const nlohmann::json reasons = nlohmann::json::parse(listed.out)["reasons"];
    ASSERT_THAT(reasons, SizeIs(2));
    EXPECT_TRUE(reasons[0]["field"] == name || reasons[1]["field"] == name) << listed.out;

    const CommandResult explained = RunLimited({"explain", "model.pmml", "cases.csv", "--format", "jsonl"});
    ASSERT_THAT(Lines(explained.out), SizeIs(1)) << explained.err;
    const nlohmann::json predictor = nlohmann::json::parse(explained.out)["predictors"][0];
    EXPECT_EQ(predictor["name"], name);
    EXPECT_EQ(predictor["value"], "no, \"such\"\nthing");
    const CommandResult table = RunLimited({"explain", "model.pmml", "cases.csv", "--format", "csv"});
    EXPECT_THAT(table.out, HasSubstr("predictor,\"a \"\"b\"\",\nc\",\"no, \"\"such\"\"\nthing\",unknown,0"));
}

TEST_F(HostileEvidence, HasLongTexts) {
    const std::string text(std::size_t{8} << 20, 'x');
    folder.Write("cases.csv", "colour,weight\n" + text + ",200\n" + text + ",100\n");
    const CommandResult scored = RunLimited({"score", "model.pmml", "cases.csv", "--only-scores", "--reasons", "2"});
    EXPECT_EQ(scored.exitStatus, 0) << scored.err.substr(0, 1000);
    EXPECT_GT(scored.out.size(), 2 * text.size());
    const CommandResult explained = RunLimited({"explain", "model.pmml", "cases.csv"});
    EXPECT_EQ(explained.exitStatus, 0) << explained.err.substr(0, 1000);
    EXPECT_LT(explained.out.size(), 10'000U);
}

std::string Values(const std::string& prefix, std::size_t count) {
    return Each(count, [&prefix](const std::string& i) { return ValueElement(prefix + i); });
}

/// A predictor with very many categories, counted in turn for the one and the other category of the target.
TEST_F(HostileEvidence, IsFound_WhenAPredictorHas100000Categories) {
    constexpr std::size_t categories = 100'000;
    const std::string counts = Each(categories, [](const std::string& i) {
        return PairCounts("v" + i, NoYesCounts(1 + static_cast<int>(i.size()), 3)) + "\n";
    });
    folder.Write(
        "model.pmml",
        PmmlDocument(XmlElement("DataDictionary", "",
                                DataField("y", FieldType::Texts, ValueElement("no") + ValueElement("yes")) +
                                    DataField("x", FieldType::Texts, Values("v", categories))) +
                     XmlElement("NaiveBayesModel", Attribute("threshold", "0.001"),
                                XmlElement("MiningSchema", "", MiningField("y", "predicted") + MiningField("x")) +
                                    XmlElement("BayesInputs", "", BayesInput("x", counts)) +
                                    BayesOutput("y", NoYesCounts(4, 5)))));
    folder.Write("cases.csv", "x\n" + Each(10'000, [](const std::string& i) { return "v" + i + "\n"; }));
    const CommandResult scored = RunLimited({"score", "model.pmml", "cases.csv", "--only-scores", "--reasons", "1"});
    EXPECT_EQ(scored.exitStatus, 0) << scored.err.substr(0, 1000);
    EXPECT_THAT(Lines(scored.out), SizeIs(10'001));
    const CommandResult explained = RunLimited({"explain", "model.pmml", "cases.csv", "--format", "csv"});
    EXPECT_EQ(explained.exitStatus, 0) << explained.err.substr(0, 1000);
    EXPECT_THAT(Lines(explained.out), SizeIs(30'001));
}

/// Each case has another pair of categories to weigh.
TEST_F(HostileEvidence, IsFound_WhenTheTargetHas1000Categories) {
    constexpr std::size_t categories = 1000;
    const std::string counts = Each(categories, [](const std::string& i) {
        return PairCounts("v" + i, TargetValueCounts(TargetValueCount("c" + i, "9"))) + "\n";
    });
    std::string ofTarget;
    for (std::size_t i = 0; i < categories; ++i)
        ofTarget += TargetValueCount("c" + std::to_string(i), std::to_string(10 + i % 7));
    folder.Write(
        "model.pmml",
        PmmlDocument(XmlElement("DataDictionary", "",
                                DataField("y", FieldType::Texts, Values("c", categories)) +
                                    DataField("x", FieldType::Texts, Values("v", categories)) +
                                    DataField("z", FieldType::Texts, Values("v", categories))) +
                     XmlElement("NaiveBayesModel", Attribute("threshold", "0.001"),
                                XmlElement("MiningSchema", "",
                                           MiningField("y", "predicted") + MiningField("x") + MiningField("z")) +
                                    XmlElement("BayesInputs", "", BayesInput("x", counts) + BayesInput("z", counts)) +
                                    BayesOutput("y", TargetValueCounts(ofTarget)))));
    std::string cases = "x,z\n";
    for (std::size_t i = 0; i < 1000; ++i)
        cases += "v" + std::to_string(i) + ",v" + std::to_string(i * 7 % categories) + "\n";
    folder.Write("cases.csv", cases);
    const CommandResult scored =
        RunLimited({"score", "model.pmml", "cases.csv", "--prediction-only", "--reasons", "2"});
    EXPECT_EQ(scored.exitStatus, 0) << scored.err.substr(0, 1000);
    EXPECT_THAT(Lines(scored.out), SizeIs(1001));
    const CommandResult explained = RunLimited({"explain", "model.pmml", "cases.csv", "--format", "csv"});
    EXPECT_EQ(explained.exitStatus, 0) << explained.err.substr(0, 1000);
    EXPECT_THAT(Lines(explained.out), SizeIs(4001));
}

/// All of them look for the same words, once for each case.
TEST_F(HostileEvidence, IsFound_WhenThereAreManySubModels) {
    constexpr std::size_t subModels = 3000;
    const std::string model =
        XmlElement("MiningSchema", "",
                   MiningField("text") + DerivedFieldsExtension(MiningField("d")) + MiningField("y", "predicted")) +
        XmlElement("BayesInputs", "", BayesInput("d", PairCounts("1", NoYesCounts(1, 3)))) +
        BayesOutput("y", NoYesCounts(4, 5));
    folder.Write(
        "model.pmml",
        PmmlDocument(
            XmlElement("DataDictionary", "",
                       DataField("text", FieldType::Texts) +
                           DataField("y", FieldType::Texts, ValueElement("no") + ValueElement("yes"))) +
            XmlElement("TransformationDictionary", "",
                       DerivedText("d", XmlElement("TextIndex", Attribute("textField", "text"), Constant("word")))) +
            Each(subModels, [&](const std::string& i) {
                return XmlElement("NaiveBayesModel",
                                  Attribute("modelName", "m" + i) + Attribute("algorithmName", "SelfLearning") +
                                      Attribute("threshold", "0.001"),
                                  model) +
                       "\n";
            })));
    std::string text;
    for (int i = 0; i < 20'000; ++i)
        text += "words of many kinds ";
    folder.Write("cases.csv", "text\n" + text + "word\n" + text + "\n");
    const CommandResult explained = RunLimited({"explain", "model.pmml", "cases.csv", "--format", "jsonl"});
    EXPECT_EQ(explained.exitStatus, 0) << explained.err.substr(0, 1000);
    const std::vector<std::string> lines = Lines(explained.out);
    ASSERT_THAT(lines, SizeIs(2 * subModels));
    EXPECT_THAT(lines.front(), HasSubstr("\"use\": \"known\""));
}

}  // namespace
}  // namespace nbscore::test
