#include "support/RunCommand.h"

#include <gtest/gtest.h>

#include <csignal>

namespace nbscore::test {

namespace {

CommandCall MakeShellCall(const std::string& script) {
    CommandCall call;
    call.program = "/bin/sh";
    call.arguments = {"-c", script};
    return call;
}

}  // namespace

TEST(RunCommand, CapturesBothOutputsAndTheExitStatus) {
    CommandCall call = MakeShellCall("cat; echo \"$GREETING\" >&2; exit 7");
    call.standardInput = std::string(200000, 'x');
    call.environment["GREETING"] = "hello";
    const CommandResult result = RunCommand(call);
    EXPECT_EQ(result.exitStatus, 7);
    EXPECT_EQ(result.out, call.standardInput);
    EXPECT_EQ(result.err, "hello\n");
}

TEST(RunCommand, PassesArgumentsOnAsTheyAre) {
    CommandCall call = MakeShellCall("printf '%s|' \"$@\"");
    call.arguments.insert(call.arguments.end(), {"sh", "", "two words", "$HOME"});
    EXPECT_EQ(RunCommand(call).out, "|two words|$HOME|");
}

TEST(RunCommand, NamesTheSignal_WhenTheProgramWasKilled) {
    StartedCommand started(MakeShellCall("cat"));
    started.SendSignal(SIGTERM);
    EXPECT_EQ(started.Wait().exitStatus, -SIGTERM);
}

TEST(RunCommand, SaysSo_WhenThereIsNoSuchProgram) {
    CommandCall call;
    call.program = "/nowhere/program";
    EXPECT_EQ(RunCommand(call).exitStatus, 127);
}

}  // namespace nbscore::test
