#include "cli/CommandTest.h"
#include "support/FitsPattern.h"

namespace nbscore::test {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string Utf16(std::string_view text) {
    std::string wide = "\xff\xfe";
    for (const char character : text)
        wide += {character, '\0'};
    return wide;
}

std::string Nested(int depth) {
    std::string document;
    for (int i = 0; i < depth; ++i)
        document += "<a>";
    for (int i = 0; i < depth; ++i)
        document += "</a>";
    return document;
}

struct RefusedDocument {
    std::string name;
    std::string document;
    /// What standard error must match as a whole, the document being model.pmml.
    std::string errorPattern;
};

void PrintTo(const RefusedDocument& refused, std::ostream* out) {
    *out << refused.name;
}

constexpr const char* anywhere = "model.pmml:[0-9]+:[0-9]+: error ";

std::string Instead(std::string_view piece, std::string_view replacement) {
    return Replace(fruitDocument, piece, replacement);
}

const std::vector<RefusedDocument> refusedDocuments = {
    {"Truncated", fruitDocument.substr(0, fruitDocument.size() / 2), std::string(anywhere) + "3: .+"},
    {"NoXml", "colour,weight\nred,200\n", std::string(anywhere) + "3: .+"},
    {"Empty", "", "model.pmml:.*error 3: .+"},
    {"WrongBytesForItsEncoding", Instead("red", "r\xe4"), std::string(anywhere) + "3: .+"},
    {"UnknownEncoding", Instead("UTF-8", "no-such-encoding"), "model.pmml:.*error (3|10): .+"},
    {"HalfAnUtf16Character", Utf16(fruitDocument) + "x", "model.pmml:.*error 3: .+"},
    {"DocumentType", Instead("<PMML ", "<!DOCTYPE PMML [<!ENTITY a \"b\">]>\n<PMML "), "model.pmml:.*error 3: .+"},
    {"ExternalDocumentType", Instead("<PMML ", "<!DOCTYPE PMML SYSTEM \"/etc/passwd\">\n<PMML "),
     "model.pmml:.*error 3: .+"},
    {"DeeplyNested", Nested(200000), "model.pmml:.*error 3: .+"},
    {"NoModel", "<PMML version=\"4.4\"><DataDictionary/></PMML>",
     "model.pmml:1:[0-9]+: error 1: <NaiveBayesModel> is required!\n  at /PMML.*"},
    {"NoDictionary", "<PMML version=\"4.4\"/>", "model.pmml:1:[0-9]+: error [12]: .*DataDictionary.*\n  at /PMML.*"},
    {"MissingThreshold", Instead(" threshold=\"0.001\"", ""),
     "model.pmml:15:[0-9]+: error 2: .*threshold.*\n  at /PMML.*/NaiveBayesModel.*"},
    {"MissingCount", Instead(" count=\"90\"", ""), "model.pmml:25:[0-9]+: error 2: .*count.*\n  at /PMML.*"},
    {"ThresholdIsNoNumber", Instead("0.001", "much"), "model.pmml:15:[0-9]+: error 9: .*much.*\n  at /PMML.*"},
    {"ThresholdIsNaN", Instead("0.001", "NaN"), "model.pmml:15:[0-9]+: error 9: .*NaN.*\n  at /PMML.*"},
    {"ThresholdIsZero", Instead("0.001", "0"), "model.pmml:15:[0-9]+: error 5: Threshold can't be zero!\n  at /PMML.*"},
    {"CountIsNoNumber", Instead("count=\"90\"", "count=\"many\""),
     "model.pmml:25:[0-9]+: error 9: .*many.*\n  at /PMML.*"},
    {"CountIsInfinite", Instead("count=\"90\"", "count=\"1e999\""),
     "model.pmml:25:[0-9]+: error 9: .*1e999.*\n  at /PMML.*"},
    {"TwoTargets", Instead("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\" usageType=\"predicted\"/>"),
     "model.pmml:19:[0-9]+: error 12: Only one target is allowed.\n  at /PMML.*"},
    {"TargetWithoutValues", Replace(Instead("<Value value=\"apple\"/>", ""), "<Value value=\"pear\"/>", ""),
     "model.pmml:.*error.*: .+"},
};

class RefusedDocumentTest : public CommandTest, public testing::WithParamInterface<RefusedDocument> {};

}  // namespace

TEST_P(RefusedDocumentTest, EndsWithStatusThreeAndSaysWhere) {
    folder.Write("model.pmml", GetParam().document);
    folder.Write("out.csv", "earlier");

    const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"});

    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, FitsPattern(GetParam().errorPattern + "\n"));
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

INSTANTIATE_TEST_SUITE_P(Documents, RefusedDocumentTest, testing::ValuesIn(refusedDocuments),
                         [](const auto& instance) { return instance.param.name; });

namespace {

/// Documents that are read, however odd.
class OddDocumentTest : public CommandTest {};

}  // namespace

TEST_F(OddDocumentTest, Scores_WhenCountsOrThresholdAreNegative) {
    for (const std::string& document :
         {Instead("count=\"90\"", "count=\"-90\""), Instead("threshold=\"0.001\"", "threshold=\"-0.001\"")}) {
        folder.Write("model.pmml", document);
        const CommandResult result = Run({"score", "model.pmml", "cases.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(Lines(result.out).size(), 3U);
    }
}

TEST_F(OddDocumentTest, Scores_WhenItIsInUtf16) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    folder.Write("model.pmml", Utf16(Instead("UTF-8", "UTF-16")));
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv"}).out, expected);
}

TEST_F(OddDocumentTest, IsAnInputFailure_WhenItCannotBeRead) {
    for (const char* document : {"nothere.pmml", "."}) {
        const CommandResult result = Run({"score", document, "cases.csv"});
        EXPECT_EQ(result.exitStatus, 4) << document;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(document));
    }
}

class RefusalAdvice : public CommandTest {
protected:
    /// The lines from the refusal on, and only those of the first error.
    std::vector<std::string> RefusalBy(const std::vector<std::string>& arguments) const {
        const CommandResult result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 3);
        std::vector<std::string> refusal;
        for (const std::string& line : Lines(result.out + result.err)) {
            if (line.find(": error ") != std::string::npos) refusal.clear();
            refusal.push_back(line);
            if (line.starts_with("  do: ")) break;
        }
        return refusal;
    }
};

TEST_F(RefusalAdvice, IsTheSameByEveryVerb) {
    const std::vector<std::string> documents = {
        Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"0\""),
        Replace(fruitDocument, "<DataDictionary>", "<DataDictionary><Extension/>"),
        Replace(fruitDocument, "<Value value=\"pear\"/>", "<Value value=\"pear\"/><Value value=\"apple\"/>"),
        Replace(fruitDocument, "usageType=\"predicted\"", "usageType=\"target\""),
        Replace(fruitDocument, "count=\"90\"", "count=\"x\""),
        "<PMML><DataDictionary/><TreeModel/></PMML>",
        "<PMML>",
    };
    for (const std::string& document : documents) {
        folder.Write("model.pmml", document);
        const std::vector<std::string> checked = RefusalBy({"check", "model.pmml"});
        EXPECT_THAT(checked.back(), testing::StartsWith("  do: ")) << document;
        EXPECT_EQ(RefusalBy({"score", "model.pmml", "cases.csv"}), checked) << document;
        EXPECT_EQ(RefusalBy({"verify", "model.pmml"}), checked) << document;
    }
}

TEST_F(RefusalAdvice, SaysWhichModelTheDocumentHoldsInstead) {
    folder.Write("model.pmml", "<PMML><DataDictionary/><TreeModel/></PMML>");
    EXPECT_EQ(RefusalBy({"score", "model.pmml", "cases.csv"}),
              (std::vector<std::string>{"model.pmml:1:1: error 1: <NaiveBayesModel> is required!", "  at /PMML",
                                        "  it reads <PMML>",
                                        "  do: Check that the document holds a Naive Bayes model: models of other "
                                        "kinds are not read. This one holds a "
                                        "TreeModel."}));
    folder.Write("model.pmml", "<PMML><DataDictionary/><AssociationModel/></PMML>");
    EXPECT_THAT(RefusalBy({"display", "model.pmml"}).back(), HasSubstr("This one holds an AssociationModel."));
}

TEST_F(RefusalAdvice, StandsBelowTheElementAtFault_WithTheInputThatItIsIn) {
    folder.Write("model.pmml", Replace(fruitDocument, "<PairCounts value=\"red\">", "<PairCounts value=\"blue\">"));
    EXPECT_THAT(RefusalBy({"score", "model.pmml", "cases.csv"}),
                testing::Contains("  it reads <PairCounts value=\"blue\"> of <BayesInput fieldName=\"colour\">"));
    const std::string longText(1000, 'x');
    folder.Write("model.pmml", Replace(fruitDocument, "threshold=\"0.001\"",
                                       "threshold=\"0\" a=\"" + longText + "\" b=\"" + longText + "\" c=\"" + longText +
                                           "\" d=\"" + longText + "\""));
    const std::vector<std::string> refusal = RefusalBy({"score", "model.pmml", "cases.csv"});
    EXPECT_THAT(refusal.at(2), testing::StartsWith("  it reads <NaiveBayesModel functionName=\"classification\" "
                                                   "threshold=\"0\" a=\"xxx"));
    EXPECT_THAT(refusal.at(2), testing::EndsWith(" ...>"));
    EXPECT_LT(refusal.at(2).size(), 400U);
}

}  // namespace nbscore::test
