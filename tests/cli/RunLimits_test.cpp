// What a run may take: --max-time, --max-memory and --max-document-bytes.

#include <string>
#include <vector>

#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class RunLimits : public CommandTest {
protected:
    /// Every verb, over the same document.
    const std::vector<std::vector<std::string>> calls = {{"score", "model.pmml", "cases.csv"},
                                                         {"display", "model.pmml"},
                                                         {"check", "model.pmml"},
                                                         {"verify", "model.pmml"}};

    CommandResult RunWithin(std::vector<std::string> call, const std::string& option, const std::string& value) const {
        call.insert(call.end(), {option, value});
        return Run(std::move(call));
    }

    void ExpectTheSameAsWithout(const std::string& option, const std::string& value) const {
        for (const std::vector<std::string>& call : calls) {
            SCOPED_TRACE(call.front() + " " + option + " " + value);
            const CommandResult without = Run(call);
            const CommandResult within = RunWithin(call, option, value);
            EXPECT_EQ(within.exitStatus, 0) << within.err;
            EXPECT_EQ(within.out, without.out);
            EXPECT_EQ(within.err, without.err);
        }
    }

    /// Of a check, the reason stands in its answer.
    void ExpectRefused(const std::string& option, const std::string& value, const std::string& message) const {
        for (const std::vector<std::string>& call : calls) {
            SCOPED_TRACE(call.front() + " " + option + " " + value);
            const CommandResult result = RunWithin(call, option, value);
            EXPECT_EQ(result.exitStatus, 3);
            EXPECT_THAT(result.out + result.err, HasSubstr("error 12: " + message));
        }
    }
};

TEST_F(RunLimits, LetARunThroughThatTakesLess) {
    ExpectTheSameAsWithout("--max-time", "100");
    ExpectTheSameAsWithout("--max-time", "1e300");
    ExpectTheSameAsWithout("--max-memory", "20M");
    ExpectTheSameAsWithout("--max-memory", "0.02G");
    ExpectTheSameAsWithout("--max-document-bytes", "1M");
    ExpectTheSameAsWithout("--max-document-bytes", std::to_string(std::string(fruitDocument).size()));
}

TEST_F(RunLimits, RefuseADocument) {
    ExpectRefused("--max-memory", "100k", "The document needs more memory than max-memory allows: 100000 bytes.");
    const std::string tooFew = std::to_string(std::string(fruitDocument).size() - 1);
    ExpectRefused("--max-document-bytes", tooFew,
                  "The document is longer than max-document-bytes allows: " + tooFew + " bytes.");
}

TEST_F(RunLimits, AreNamedInTheAdviceOfACheck) {
    EXPECT_THAT(Run({"check", "model.pmml", "--max-memory", "1k"}).out,
                HasSubstr("--max-memory, or Limits::maxMemory"));
    EXPECT_THAT(Run({"check", "model.pmml", "--max-document-bytes", "1"}).out,
                HasSubstr("--max-document-bytes, or Limits::maxDocumentBytes"));
}

TEST_F(RunLimits, EndARun_WhenItsTimeIsOver) {
    folder.Write("out.csv", "earlier");
    for (std::vector<std::string> call : calls) {
        SCOPED_TRACE(call.front());
        const CommandResult result = RunWithin(call, "--max-time", "1e-9");
        EXPECT_EQ(result.exitStatus, 5);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "error: the run takes more time than --max-time allows\n");
    }
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "-o", "out.csv", "--max-time", "1e-9"}).exitStatus, 5);
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_EQ(folder.CountEntries(), 3U);
}

TEST_F(RunLimits, AreRefused_WhenTheyAreNoSuchNumbers) {
    for (const std::string value : {"0", "-1", "", "soon", "1s", "nan"}) {
        const CommandResult result = Run({"check", "model.pmml", "--max-time", value});
        EXPECT_EQ(result.exitStatus, 2) << value;
        EXPECT_THAT(result.err, StartsWith("error: --max-time: '" + value + "' is no number above 0\n"));
    }
    for (const std::string option : {"--max-memory", "--max-document-bytes"}) {
        for (const std::string value : {"0", "-1", "", "M", "1T", "1m", "0.5", "0.0001k", "1e300", "nan", "1kk"}) {
            const CommandResult result = Run({"check", "model.pmml", option, value});
            EXPECT_EQ(result.exitStatus, 2) << value;
            EXPECT_THAT(result.err, StartsWith("error: " + option + ": '" + value +
                                               "' is no number of bytes above 0, such as 800M or 2G\n"));
        }
    }
}

}  // namespace
}  // namespace nbscore::test
