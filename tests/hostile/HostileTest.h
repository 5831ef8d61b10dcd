#pragma once

#include "cli/CommandTest.h"
#include "support/FitsPattern.h"

namespace nbscore::test {

/// Runs the built command with little memory and little time: 512 megabytes of addresses and half a minute.
class HostileTest : public CommandTest {
protected:
    /// Sanitizers reserve terabytes of addresses, so their builds have no limit on them, and neither has Windows.
#if defined(NBSCORE_SANITIZED) || defined(_WIN32)
    static constexpr bool memoryIsLimited = false;
    static constexpr unsigned seconds = 200;
#else
    static constexpr bool memoryIsLimited = true;
    static constexpr unsigned seconds = 30;
#endif

    CommandCall LimitedCall(std::vector<std::string> arguments) const {
        CommandCall call = MakeCall(std::move(arguments));
        if (memoryIsLimited) call.memoryLimit = std::uint64_t{512} << 20;
        call.secondsUntilKilled = seconds;
        return call;
    }

    CommandResult RunLimited(std::vector<std::string> arguments) const {
        return RunCommand(LimitedCall(std::move(arguments)));
    }

    /// Scores the cases with this document, in little memory and time. By the standard's rule the document may mean
    /// something else or nothing, but the run must end as orderly.
    CommandResult Score(const std::string& document) const {
        folder.Write("model.pmml", document);
        const CommandResult standard = RunLimited({"score", "--rule", "standard", "model.pmml", "cases.csv"});
        EXPECT_THAT(standard.exitStatus, testing::AnyOf(0, 1, 3)) << standard.err.substr(0, 1000);
        return RunLimited({"score", "model.pmml", "cases.csv", "--only-scores"});
    }

    /// The scores of the two fruits, whatever else the table and the document hold.
    void ExpectScoresOfFruits(const CommandResult& result) const {
        EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
        folder.Write("fruits.pmml", fruitDocument);
        folder.Write("fruits.csv", fruitCases);
        EXPECT_EQ(result.out, Run({"score", "fruits.pmml", "fruits.csv", "--only-scores"}).out);
    }

    /// The verbs that refuse a document alike, with a document of this name.
    static std::vector<std::vector<std::string>> WaysToRead(const std::string& document) {
        return {{"score", document, "cases.csv"},
                {"score", "--rule", "standard", document, "cases.csv"},
                {"verify", document},
                {"display", document}};
    }

    /// The command says in one line what is wrong and where in the document; then may come the path and the start tag
    /// there, and what to do.
    static void ExpectRefused(const CommandResult& result, const std::string& pattern) {
        EXPECT_EQ(result.exitStatus, 3) << result.err.substr(0, 1000);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err,
                    FitsPattern("[^:\n]+:" + pattern + "\n(  at /PMML[^\n]*\n)?(  it reads <[^\n]*\n)?  do: [^\n]+\n"));
        EXPECT_LT(result.err.size(), 3000U);
    }

    void ExpectRefusedByAll(const std::string& document, const std::string& pattern) const {
        for (const std::vector<std::string>& arguments : WaysToRead(document)) {
            SCOPED_TRACE(arguments.front());
            ExpectRefused(RunLimited(arguments), pattern);
        }
    }
};

}  // namespace nbscore::test
