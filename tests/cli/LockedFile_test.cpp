// A file that another program has open and lets nobody else write to: only Windows has such files.

#include <windows.h>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

/// Holds a file open; others may read it, where it shares that, and not write.
class OpenFile {
public:
    OpenFile(const std::filesystem::path& path, DWORD sharing)
        : handle(CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    ~OpenFile() { CloseHandle(handle); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

private:
    HANDLE handle;
};

using LockedFile = CommandTest;

TEST_F(LockedFile, IsNotReplaced_WhenItIsTheOutput) {
    folder.Write("out.csv", "earlier");
    {
        const OpenFile locked(folder / "out.csv", FILE_SHARE_READ);
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"});
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_THAT(result.err, StartsWith("error: cannot write out.csv: "));
    }
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"}).exitStatus, 0);
}

TEST_F(LockedFile, IsNotReplaced_WhenItIsOpenedDuringTheRun) {
    folder.Write("out.csv", "earlier");
    {
        // It may be written to, so that the run begins, but not be taken away.
        const OpenFile open(folder / "out.csv", FILE_SHARE_READ | FILE_SHARE_WRITE);
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"});
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_THAT(result.err, StartsWith("error: cannot write out.csv: "));
    }
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

TEST_F(LockedFile, IsAnError_WhenItIsTheTable) {
    const OpenFile locked(folder / "cases.csv", 0);
    const CommandResult result = Run({"score", "model.pmml", "cases.csv"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "error: cannot read cases.csv: Permission denied\n");
}

TEST_F(LockedFile, IsAnError_WhenItIsTheDocument) {
    const OpenFile locked(folder / "model.pmml", 0);
    const CommandResult result = Run({"score", "model.pmml", "cases.csv"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_THAT(result.err, testing::HasSubstr("model.pmml"));
}

}  // namespace
}  // namespace nbscore::test
