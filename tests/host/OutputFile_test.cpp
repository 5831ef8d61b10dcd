#include "host/OutputFile.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "Message.h"
#include "host/HostError.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

namespace fs = std::filesystem;

std::string GetOpenFault(const fs::path& path) {
    return GetMessageOf<InputOutputError>([&path] { OutputFile output(path); });
}

TEST(OutputFile, FileAppears_WhenCommitted) {
    const TemporaryFolder folder;
    OutputFile output(folder / "out.csv");
    output.Write("a\r\n");
    output.Write(std::string("b\0c\n", 4));
    EXPECT_FALSE(fs::exists(folder / "out.csv"));
    output.Commit();
    EXPECT_EQ(ReadWholeFile(folder / "out.csv"), std::string("a\r\nb\0c\n", 7));
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(OutputFile, HoldsAllBytes_WhenThereAreManyInPiecesOfAnySize) {
    const TemporaryFolder folder;
    OutputFile output(folder / "out.csv");
    std::string expected;
    for (std::size_t size = 1; expected.size() < std::size_t{20} << 20; size = size * 3 % 1'000'003) {
        const std::string piece(size, static_cast<char>('a' + size % 26));
        output.Write(piece);
        expected += piece;
    }
    output.Commit();
    EXPECT_TRUE(ReadWholeFile(folder / "out.csv") == expected);
}

TEST(OutputFile, NothingIsLeft_WhenNotCommitted) {
    const TemporaryFolder folder;
    {
        OutputFile output(folder / "out.csv");
        output.Write("half");
        EXPECT_EQ(folder.CountEntries(), 1U);
    }
    EXPECT_EQ(folder.CountEntries(), 0U);
}

TEST(OutputFile, FileBeforeStays_UntilCommitted) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "out.csv", "before");
    {
        OutputFile output(folder / "out.csv");
        output.Write("half");
    }
    EXPECT_EQ(ReadWholeFile(folder / "out.csv"), "before");
    OutputFile output(folder / "out.csv");
    output.Write("after");
    EXPECT_EQ(ReadWholeFile(folder / "out.csv"), "before");
    output.Commit();
    EXPECT_EQ(ReadWholeFile(folder / "out.csv"), "after");
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(OutputFile, NameMayBeAnything_ThatTheSystemTakes) {
    const TemporaryFolder folder;
    const fs::path path = folder / (std::string(240, 'x') + "\xC3\xA4.csv");
    OutputFile output(path);
    output.Commit();
    EXPECT_TRUE(fs::exists(path));
}

TEST(OutputFile, IsRefused_WhenTheDestinationIsAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(GetOpenFault(folder.GetPath()), "cannot write " + folder.GetPath().string() + ": it is a folder");
    EXPECT_EQ(folder.CountEntries(), 0U);
}

TEST(OutputFile, IsRefused_WhenTheFolderIsNotThere) {
    const TemporaryFolder folder;
    const std::string path = (folder / "none" / "out.csv").string();
    EXPECT_EQ(GetOpenFault(path), "cannot write " + path + ": No such file or directory");
    EXPECT_EQ(GetOpenFault(""), "cannot write : it names no file");
}

TEST(OutputFile, CommitFailsAndLeavesNothing_WhenAFolderTookThePlaceMeanwhile) {
    const TemporaryFolder folder;
    {
        OutputFile output(folder / "out.csv");
        fs::create_directories(folder / "out.csv" / "inside");
        EXPECT_THROW(output.Commit(), InputOutputError);
    }
    EXPECT_EQ(folder.CountEntries(), 1U);
    EXPECT_TRUE(fs::is_directory(folder / "out.csv"));
}

#ifndef _WIN32

TEST(OutputFile, RelativePathIsTaken_FromTheWorkingFolder) {
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.GetPath());
    {
        OutputFile output("out.csv");
        output.Commit();
    }
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(folder / "out.csv"));
}

TEST(OutputFile, LinkStaysAndItsFileIsReplaced_WhenTheDestinationIsALink) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "data");
    WriteWholeFile(folder / "data/real.csv", "before");
    fs::create_symlink("data/real.csv", folder / "near");
    fs::create_symlink(folder / "near", folder / "far");
    OutputFile output(folder / "far");
    output.Write("after");
    output.Commit();
    EXPECT_TRUE(fs::is_symlink(folder / "far"));
    EXPECT_TRUE(fs::is_symlink(folder / "near"));
    EXPECT_FALSE(fs::is_symlink(folder / "data/real.csv"));
    EXPECT_EQ(ReadWholeFile(folder / "data/real.csv"), "after");
}

TEST(OutputFile, FileAppearsBehindTheLink_WhenItWasNotThere) {
    const TemporaryFolder folder;
    fs::create_symlink("real.csv", folder / "link");
    OutputFile output(folder / "link");
    output.Write("x");
    output.Commit();
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(ReadWholeFile(folder / "real.csv"), "x");
}

TEST(OutputFile, IsRefused_WhenLinksLeadInACircle) {
    const TemporaryFolder folder;
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(GetOpenFault(folder / "a"),
              "cannot write " + (folder / "a").string() + ": Too many levels of symbolic links");
}

TEST(OutputFile, PermissionsStay_WhenAFileIsReplaced) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "out.csv", "before");
    fs::permissions(folder / "out.csv", fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    OutputFile output(folder / "out.csv");
    output.Commit();
    EXPECT_EQ(fs::status(folder / "out.csv").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
}

TEST(OutputFile, PermissionsFollowTheMask_WhenTheFileIsNew) {
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    OutputFile output(folder / "out.csv");
    output.Commit();
    umask(before);
    EXPECT_EQ(fs::status(folder / "out.csv").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST(OutputFile, IsRefused_WhenTheFileOrFolderMayNotBeWrittenTo) {
    if (geteuid() == 0) GTEST_SKIP() << "the administrator may write everywhere";
    const TemporaryFolder folder;
    WriteWholeFile(folder / "out.csv", "before");
    fs::permissions(folder / "out.csv", fs::perms::owner_read);
    EXPECT_EQ(GetOpenFault(folder / "out.csv"),
              "cannot write " + (folder / "out.csv").string() + ": Permission denied");
    fs::permissions(folder.GetPath(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(GetOpenFault(folder / "new.csv"),
              "cannot write " + (folder / "new.csv").string() + ": Permission denied");
    fs::permissions(folder.GetPath(), fs::perms::owner_all);
}

TEST(OutputFile, DeviceIsWrittenToDirectly_WhenItIsTheDestination) {
    OutputFile output("/dev/null");
    output.Write("x");
    output.Commit();
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(OutputFile, FailureIsReportedWithItsReason_WhenTheDiskIsFull) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    const std::string expected = "cannot write /dev/full: No space left on device";
    EXPECT_EQ(GetMessageOf<InputOutputError>([] {
                  OutputFile output("/dev/full");
                  output.Write("x");
                  output.Commit();
              }),
              expected);
    EXPECT_EQ(GetMessageOf<InputOutputError>([] {
                  OutputFile output("/dev/full");
                  output.Write(std::string(1 << 20, 'x'));
              }),
              expected);
}

#endif

}  // namespace
}  // namespace nbscore::test
