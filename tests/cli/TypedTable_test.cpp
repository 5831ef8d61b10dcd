// Standard input as a device that has a name, and as a terminal.

#include <unistd.h>

#include "cli/CommandTest.h"
#include "cli/PseudoTerminal.h"

namespace nbscore::test {

using testing::StartsWith;

namespace {

class TypedTable : public CommandTest {};

}  // namespace

TEST_F(TypedTable, MayHaveTheNameOfStandardInput) {
    const CommandResult result = Run({"score", "model.pmml", "/dev/stdin"}, fruitCases);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, Run({"score", "model.pmml", "cases.csv"}).out);
}

TEST_F(TypedTable, IsWaitedForAndSaysSo) {
    for (const std::string& option : {std::string(), std::string(" --quiet")}) {
        const PseudoTerminal terminal;
        const std::string typed = fruitCases + "\x04";
        ASSERT_EQ(write(terminal.GetDescriptor(), typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
        CommandCall call =
            MakeCall({"-c", "'" NBSCORE_COMMAND "' score model.pmml" + option + " <" + terminal.GetPath()});
        call.program = "/bin/sh";
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.out, Run({"score", "model.pmml", "cases.csv"}).out);
        EXPECT_THAT(result.err, StartsWith(option.empty() ? "Type or paste a table: " : ""));
        EXPECT_EQ(result.err.empty(), !option.empty());
    }
}

}  // namespace nbscore::test
