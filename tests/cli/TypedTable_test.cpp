// Standard input as a device that has a name, and as a terminal.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::StartsWith;

namespace {

/// A terminal at which somebody has typed something already.
class TypedTerminal {
public:
    explicit TypedTerminal(const std::string& typed) : master(posix_openpt(O_RDWR | O_NOCTTY)) {
        EXPECT_EQ(grantpt(master), 0);
        EXPECT_EQ(unlockpt(master), 0);
        const char* const name = ptsname(master);
        if (name == nullptr) throw std::runtime_error("this machine has no pseudo-terminals (/dev/pts)");
        path = name;
        EXPECT_EQ(write(master, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    }
    ~TypedTerminal() { close(master); }
    TypedTerminal(const TypedTerminal&) = delete;
    TypedTerminal& operator=(const TypedTerminal&) = delete;

    const std::string& GetPath() const { return path; }

private:
    int master;
    std::string path;
};

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
        const TypedTerminal terminal(fruitCases + "\x04");
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
