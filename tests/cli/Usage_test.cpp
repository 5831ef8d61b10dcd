#include <cstdlib>
#include <fstream>

#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class UsageTest : public CommandTest {
protected:
    /// Expects a usage error that has a text in it and points to a help call.
    void ExpectUsageError(const std::vector<std::string>& arguments, const std::string& problem,
                          const std::string& helpCall = "nbscore score --help") const {
        const CommandResult result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2) << problem;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "error: " + problem + "\nTry '" + helpCall + "'.\n");
    }
};

}  // namespace

TEST_F(UsageTest, IsRefused_WhenNoCommandOrAnUnknownOneIsGiven) {
    ExpectUsageError({}, "no command was given", "nbscore --help");
    ExpectUsageError({"scroe", "model.pmml"}, "'scroe' is not a command", "nbscore --help");
    ExpectUsageError({"--quick"}, "'--quick' is not an option here", "nbscore --help");
}

TEST_F(UsageTest, IsRefused_WhenArgumentsAreMissingOrTooMany) {
    ExpectUsageError({"score"}, "MODEL is required");
    ExpectUsageError({"display"}, "MODEL is required", "nbscore display --help");
    ExpectUsageError({"score", "model.pmml", "cases.csv", "more"}, "'more' was not expected");
    ExpectUsageError({"display", "model.pmml", "more"}, "'more' was not expected", "nbscore display --help");
}

TEST_F(UsageTest, IsRefused_WhenAnOptionIsUnknown) {
    ExpectUsageError({"score", "--quick"}, "'--quick' is not an option here");
    ExpectUsageError({"display", "model.pmml", "--quiet"}, "'--quiet' is not an option here", "nbscore display --help");
}

TEST_F(UsageTest, IsRefused_WhenAnOptionIsGivenTwice) {
    ExpectUsageError({"score", "model.pmml", "--rule", "standard", "--rule", "smoothed"},
                     "--rule: it is given 2 times, and may be given only once");
    ExpectUsageError({"score", "model.pmml", "-o", "a", "--output=b", "-o", "c"},
                     "--output: it is given 3 times, and may be given only once");
    ExpectUsageError({"check", "model.pmml", "--format", "json", "--format", "json"},
                     "--format: it is given 2 times, and may be given only once", "nbscore check --help");
}

TEST_F(UsageTest, IsRefused_WhenAnOptionHasNoValue) {
    ExpectUsageError({"score", "model.pmml", "--delimiter"}, "--delimiter: 1 required CHAR missing");
}

TEST_F(UsageTest, IsRefused_WhenAFileHasAnEmptyName) {
    ExpectUsageError({"score", "model.pmml", "cases.csv", "-o", ""}, "--output: the name is empty");
    ExpectUsageError({"score", "model.pmml", "cases.csv", "--plugin", ""}, "--plugin: the name is empty");
    ExpectUsageError({"score", "model.pmml", "cases.csv", "--plugin="}, "--plugin: 1 required PATH missing");
    ExpectUsageError({"score", "", "cases.csv"}, "MODEL: the name is empty");
    ExpectUsageError({"score", "model.pmml", ""}, "CASES: the name is empty");
    ExpectUsageError({"display", ""}, "MODEL: the name is empty", "nbscore display --help");
    ExpectUsageError({"verify", ""}, "MODEL: the name is empty", "nbscore verify --help");
    ExpectUsageError({"check", "model.pmml", ""}, "DOCUMENT: the name is empty", "nbscore check --help");
}

TEST_F(UsageTest, IsRefused_WhenAWordIsNotOneOfTheChoices) {
    ExpectUsageError({"score", "model.pmml", "cases.csv", "--format", "xml"},
                     "--format: 'xml' is not one of csv|jsonl");
    ExpectUsageError({"score", "model.pmml", "cases.csv", "--bad-values", "ignore"},
                     "--bad-values: 'ignore' is not one of stop|missing");
}

TEST_F(UsageTest, IsRefused_WhenTheDelimiterCannotBeOne) {
    for (const char* delimiter : {"\"", "\n", "\r", "ab", "", "\xc3\xa4"}) {
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "--delimiter", delimiter});
        EXPECT_EQ(result.exitStatus, 2) << delimiter;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("error: --delimiter: '"));
    }
}

TEST_F(UsageTest, IsRefused_WhenAPrefixIsGivenForAFormatWithoutColumns) {
    ExpectUsageError({"score", "model.pmml", "cases.csv", "--format", "jsonl", "--prefix", "my_"},
                     "--prefix: it names columns, and --format jsonl has none");
}

TEST_F(UsageTest, IsRefused_WhenTheResultWouldDestroyTheModel) {
    for (const char* verb : {"score", "display"}) {
        const CommandResult result = Run({verb, "model.pmml", "-o", "./model.pmml"});
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_THAT(result.err, StartsWith("error: --output: './model.pmml' is the model's own document\n"));
    }
    EXPECT_EQ(folder.Read("model.pmml"), fruitDocument);
}

TEST_F(UsageTest, PrintsVersionAndHelpOnStandardOutput) {
    EXPECT_EQ(Run({"--version"}).out, "nbscore " NBSCORE_VERSION "\n");
    for (const std::vector<std::string>& call : {std::vector<std::string>{"--help"}, {"score", "-h"}}) {
        const CommandResult result = Run(call);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_THAT(result.out, StartsWith("Usage: nbscore "));
        EXPECT_EQ(result.err, "");
    }
}

TEST_F(UsageTest, IsReportedAsFailure_WhenHelpCannotBeWritten) {
    CommandCall call = MakeCall({"--help"});
    call.outputIsClosedPipe = true;
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
}

}  // namespace nbscore::test
