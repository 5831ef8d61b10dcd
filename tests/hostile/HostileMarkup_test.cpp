// Files of XML with far too much of something.

#include <filesystem>

#include "hostile/HostileTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* notXml = "error 3: The document is no well-formed XML: .+";

class HostileMarkup : public HostileTest {};

/// Each name twice, also where a prefix is to be taken off every one.
TEST_F(HostileMarkup, IsScored_WhenElementsHaveAHundredAndFiftyThousandNames) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    for (const std::string prefix : {"", "p:"}) {
        std::string names;
        for (int i = 0; i < 300'000; ++i)
            names += "<" + prefix + "term_" + std::to_string(i % 150'000) + "/>\n";
        std::string document = Replace(fruitDocument, "<Header/>", "<Header>" + names + "</Header>");
        document = Replace(document, "<PMML", "<" + prefix + "PMML xmlns:p=\"http://www.dmg.org/PMML-4_4\"");
        folder.Write("model.pmml", Replace(document, "</PMML>", "</" + prefix + "PMML>"));
        const CommandResult result = RunLimited({"score", "model.pmml", "cases.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(result.out, expected);
    }
}

/// A million bins, which take more than a hundred megabytes when the model is made.
TEST_F(HostileMarkup, IsRefusedAndTheNextOneChecked_WhenMemoryRunsOutAfterParsing) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    folder.Write("large.pmml", Replace(fruitDocument, "<PairCounts value=\"0\">", "<PairCounts value=\"1000000\">"));
    const std::string refusal = "The document takes more memory than there is.";
    for (const std::string format : {"text", "json"}) {
        CommandCall call = LimitedCall({"check", "large.pmml", "model.pmml", "--format", format, "--max-memory", "1G"});
        call.memoryLimit = std::uint64_t{100} << 20;
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.exitStatus, 3) << result.err;
        EXPECT_THAT(result.out + result.err, HasSubstr(refusal)) << format;
        const std::string sound = format == "text" ? "model.pmml: single classifier, sound" : "\"sound\": true";
        EXPECT_THAT(result.out, HasSubstr(sound)) << result.err;
    }
    EXPECT_EQ(RunLimited({"check", "large.pmml"}).exitStatus, 0);
}

TEST_F(HostileMarkup, IsRefused_WhenItIsAGigabyteOfZeros) {
    std::filesystem::resize_file(folder.Write("zeros.pmml", ""), std::uintmax_t{1} << 30);
    ExpectRefusedByAll("zeros.pmml", std::string("1:1: ") + notXml);
    EXPECT_EQ(RunLimited({"check", "zeros.pmml"}).exitStatus, 3);
}

TEST_F(HostileMarkup, IsRefused_WhenABinIsNumberedTwoBillion) {
    folder.Write("model.pmml", Replace(fruitDocument, "<PairCounts value=\"0\">", "<PairCounts value=\"2000000000\">"));
    // By the standard's rule bins have no numbers, but texts.
    for (const char* verb : {"score", "verify", "display"}) {
        ExpectRefused(RunLimited({verb, "model.pmml"}),
                      "43:9: error 12: Bin number of input 'weight' 2000000000 is above 1000000.");
    }
}

TEST_F(HostileMarkup, IsRefused_WhenItsEntitiesMultiply) {
    std::string declarations = "<!ENTITY e0 'ha'>";
    for (int i = 1; i < 10; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            declarations += "&e" + std::to_string(i - 1) + ";";
        declarations += "'>";
    }
    folder.Write("model.pmml", "<!DOCTYPE PMML [" + declarations + "]>\n<PMML>&e9;</PMML>");
    ExpectRefusedByAll("model.pmml", "1:1: error 3: A document type declaration is not accepted.");
}

TEST_F(HostileMarkup, RevealsNothingOfAFile_WhenAnEntityNamesIt) {
    folder.Write("secret", "hush");
    folder.Write("model.pmml", "<!DOCTYPE PMML [<!ENTITY e SYSTEM \"secret\">]>\n" +
                                   Replace(fruitDocument.substr(fruitDocument.find("<PMML")), "<Header/>",
                                           "<Header copyright=\"mine\">&e;</Header>"));
    for (const std::vector<std::string>& arguments : WaysToRead("model.pmml")) {
        const CommandResult result = RunLimited(arguments);
        ExpectRefused(result, "1:1: error 3: A document type declaration is not accepted.");
        EXPECT_THAT(result.err, Not(HasSubstr("hush")));
    }
}

}  // namespace
}  // namespace nbscore::test
