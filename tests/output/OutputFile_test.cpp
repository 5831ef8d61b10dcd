#include "output/OutputFile.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#endif
#ifdef __linux__
#include <sys/xattr.h>
#endif

#include "output/FileSystemCalls.h"
#include "output/HostError.h"
#include "support/Message.h"
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

TEST(OutputFile, RegularFileIsLeftAsItIs_WhenItTookThePlaceOfADevice) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    EXPECT_EQ(OpenForWriting(path), nullptr);
    EXPECT_EQ(folder.Read("out.csv"), "before");
}

constexpr mode_t allModeBits = 07777;

struct stat StatusOf(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t ModeOf(const fs::path& path) {
    return StatusOf(path).st_mode & allModeBits;
}

/// The one file in the folder that is being written.
fs::path FindTemporary(const TemporaryFolder& folder) {
    for (const std::string& name : folder.List()) {
        if (name.starts_with(".nbscore-")) return folder / name;
    }
    ADD_FAILURE() << "no file is being written";
    return {};
}

std::string GetCommitFault(OutputFile& output) {
    return GetMessageOf<InputOutputError>([&output] { output.Commit(); });
}

TEST(OutputFile, HasNoSetIdBits_WhenTheReplacedFileHadThem) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    ASSERT_EQ(chmod(path.c_str(), 06755), 0);
    OutputFile output(path);
    EXPECT_EQ(ModeOf(FindTemporary(folder)), 0600);
    output.Commit();
    EXPECT_EQ(ModeOf(path), 0755);
}

TEST(OutputFile, IsForItsOwnerAlone_WhileItIsWritten) {
    const TemporaryFolder folder;
    const mode_t before = umask(0);
    for (const char* const name : {"new.csv", "old.csv"}) {
        if (std::string(name) == "old.csv") {
            folder.Write(name, "before");
            ASSERT_EQ(chmod((folder / name).c_str(), 0666), 0);
        }
        OutputFile output(folder / name);
        EXPECT_EQ(ModeOf(FindTemporary(folder)), 0600) << name;
        output.Write("secret");
        output.Flush();
        EXPECT_EQ(ModeOf(FindTemporary(folder)), 0600) << name;
        output.Commit();
        EXPECT_EQ(ModeOf(folder / name), 0666) << name;
    }
    umask(before);
    EXPECT_EQ(folder.CountEntries(), 2U);
}

TEST(OutputFile, PermissionsAreThoseOfTheFile_ThatIsThereInTheEnd) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    OutputFile output(path);
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    output.Commit();
    EXPECT_EQ(ModeOf(path), 0600);
}

TEST(OutputFile, ForeignFileIsNotTouched_WhenALinkToItTakesTheTemporaryName) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    const fs::path foreign = elsewhere.Write("foreign", "foreign");
    ASSERT_EQ(chmod(foreign.c_str(), 0600), 0);
    const fs::path path = folder.Write("out.csv", "before");
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    OutputFile output(path);
    output.Write("after");
    const fs::path temporary = FindTemporary(folder);
    fs::rename(temporary, folder / "taken");
    fs::create_symlink(foreign, temporary);
    EXPECT_EQ(GetCommitFault(output),
              "cannot write " + path.string() + ": somebody took away " + temporary.filename().string());
    EXPECT_EQ(ModeOf(foreign), 0600);
    EXPECT_EQ(elsewhere.Read("foreign"), "foreign");
    EXPECT_EQ(folder.Read("out.csv"), "before");
}

TEST(OutputFile, ForeignFileIsNotTouched_WhenALinkToItTakesThePlace) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    const fs::path foreign = elsewhere.Write("foreign", "foreign");
    ASSERT_EQ(chmod(foreign.c_str(), 0604), 0);
    OutputFile output(folder.Write("out.csv", "before"));
    fs::remove(folder / "out.csv");
    fs::create_symlink(foreign, folder / "out.csv");
    EXPECT_EQ(GetCommitFault(output),
              "cannot write " + (folder / "out.csv").string() + ": Too many levels of symbolic links");
    EXPECT_EQ(ModeOf(foreign), 0604);
    EXPECT_EQ(elsewhere.Read("foreign"), "foreign");
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(OutputFile, AppearsWhereItWasBegun_WhenTheFolderIsSwappedForAnother) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "own");
    fs::create_directories(folder / "foreign");
    folder.Write("own/out.csv", "before");
    folder.Write("foreign/out.csv", "foreign");
    OutputFile output(folder / "own/out.csv");
    output.Write("after");
    fs::rename(folder / "own", folder / "moved");
    fs::create_directory_symlink(folder / "foreign", folder / "own");
    output.Commit();
    EXPECT_EQ(folder.Read("moved/out.csv"), "after");
    EXPECT_EQ(folder.Read("foreign/out.csv"), "foreign");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "moved"), fs::directory_iterator()), 1);
}

/// Acts as a user who has no rights but his own, while it lives.
class AsOrdinaryUser {
public:
    static constexpr uid_t user = 61234;

    AsOrdinaryUser() { EXPECT_EQ(seteuid(user), 0); }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(0), 0); }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
};

/// What only the administrator can try: files of several owners.
class OutputFileOfOthers : public testing::Test {
protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only the administrator can give files away";
        path = folder.Write("out.csv", "before");
        if (chown(path.c_str(), owner, group) != 0) GTEST_SKIP() << "no such users may exist here";
        ASSERT_EQ(chmod(path.c_str(), 0664), 0);
        ASSERT_EQ(chmod(folder.GetPath().c_str(), 0777), 0);
    }

    static constexpr uid_t owner = 61111;
    static constexpr gid_t group = 62222;
    TemporaryFolder folder;
    fs::path path;
};

TEST_F(OutputFileOfOthers, KeepsItsOwnerAndGroup_WhenTheAdministratorReplacesIt) {
    OutputFile output(path);
    output.Commit();
    EXPECT_EQ(StatusOf(path).st_uid, owner);
    EXPECT_EQ(StatusOf(path).st_gid, group);
    EXPECT_EQ(ModeOf(path), 0664);
}

TEST_F(OutputFileOfOthers, IsShownToNoOtherGroup_WhenItsGroupCannotBeKept) {
    for (const auto& [before, after] : {std::pair(0664, 0644), {0660, 0600}, {0646, 0644}, {0606, 0600}}) {
        ASSERT_EQ(chown(path.c_str(), AsOrdinaryUser::user, group), 0);
        ASSERT_EQ(chmod(path.c_str(), static_cast<mode_t>(before)), 0);
        {
            const AsOrdinaryUser user;
            OutputFile output(path);
            output.Commit();
        }
        EXPECT_NE(StatusOf(path).st_gid, group);
        EXPECT_EQ(ModeOf(path), static_cast<mode_t>(after));
    }
}

TEST_F(OutputFileOfOthers, KeepsItsGroup_WhenOnlyTheOwnerCannotBeKept) {
    ASSERT_EQ(chown(path.c_str(), owner, getegid()), 0);
    {
        const AsOrdinaryUser user;
        OutputFile output(path);
        output.Commit();
    }
    EXPECT_EQ(StatusOf(path).st_uid, AsOrdinaryUser::user);
    EXPECT_EQ(ModeOf(path), 0664);
}

TEST_F(OutputFileOfOthers, IsNotReplaced_WhenItMayNoLongerBeWrittenTo) {
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    const AsOrdinaryUser user;
    OutputFile output(path);
    ASSERT_EQ(seteuid(0), 0);
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    ASSERT_EQ(seteuid(AsOrdinaryUser::user), 0);
    EXPECT_EQ(GetCommitFault(output), "cannot write " + path.string() + ": Permission denied");
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST_F(OutputFileOfOthers, IsMade_WhenTheFolderMayNotBeListed) {
    ASSERT_EQ(chmod(folder.GetPath().c_str(), 0333), 0);
    {
        const AsOrdinaryUser user;
        OutputFile output(folder / "new.csv");
        output.Commit();
    }
    EXPECT_EQ(folder.List(), (std::vector<std::string>{"new.csv", "out.csv"}));
}

TEST_F(OutputFileOfOthers, IsNotMadeWhereAStrangersLinkLeads_InAFolderOfEverybody) {
    const TemporaryFolder elsewhere;
    fs::create_symlink(elsewhere / "made", folder / "link");
    ASSERT_EQ(lchown((folder / "link").c_str(), owner, group), 0);
    ASSERT_EQ(chmod(folder.GetPath().c_str(), 01777), 0);
    EXPECT_EQ(GetOpenFault(folder / "link"), "cannot write " + (folder / "link").string() + ": Permission denied");
    EXPECT_EQ(elsewhere.CountEntries(), 0U);
    // In a folder of one's own, what a link of another one says counts.
    ASSERT_EQ(chmod(folder.GetPath().c_str(), 0755), 0);
    OutputFile(folder / "link").Commit();
    EXPECT_EQ(elsewhere.List(), std::vector<std::string>{"made"});
}

#endif

#ifdef __linux__

constexpr const char* accessList = "system.posix_acl_access";
constexpr const char* listForNewFiles = "system.posix_acl_default";

std::optional<std::string> AttributeOf(const fs::path& path, const char* name) {
    std::string value(1000, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    if (size < 0) return std::nullopt;
    value.resize(static_cast<std::size_t>(size));
    return value;
}

bool SetAttribute(const fs::path& path, const char* name, const std::string& value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

/// As the system stores it: a version, then for each entry its kind, its permissions and whom it concerns.
std::string AccessListFor(uid_t user, unsigned userMay, unsigned mask) {
    struct Entry {
        std::uint16_t kind;
        std::uint16_t permissions;
        std::uint32_t whom;
    };
    constexpr std::uint32_t nobody = 0xFFFFFFFF;
    constexpr std::uint32_t version = 2;
    const Entry entries[] = {{1, 6, nobody},
                             {2, static_cast<std::uint16_t>(userMay), user},
                             {4, 4, nobody},
                             {16, static_cast<std::uint16_t>(mask), nobody},
                             {32, 0, nobody}};
    std::string bytes(reinterpret_cast<const char*>(&version), sizeof version);
    return bytes.append(reinterpret_cast<const char*>(entries), sizeof entries);
}

TEST(OutputFile, AttributesStay_WhenAFileIsReplaced) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    if (!SetAttribute(path, "user.origin", "shop")) GTEST_SKIP() << "this file system keeps no attributes";
    SetAttribute(path, "user.empty", "");
    OutputFile output(path);
    output.Commit();
    EXPECT_EQ(AttributeOf(path, "user.origin"), "shop");
    EXPECT_EQ(AttributeOf(path, "user.empty"), "");
}

TEST(OutputFile, AccessControlListStays_WhenAFileIsReplaced) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    const std::string list = AccessListFor(61234, 6, 6);
    if (!SetAttribute(path, accessList, list)) GTEST_SKIP() << "this file system keeps no such lists";
    EXPECT_EQ(ModeOf(path), 0660);
    OutputFile output(path);
    EXPECT_EQ(ModeOf(FindTemporary(folder)), 0600);
    output.Commit();
    EXPECT_EQ(AttributeOf(path, accessList), list);
    EXPECT_EQ(ModeOf(path), 0660);
}

TEST(OutputFile, OthersHaveNoAccess_WhenTheFolderGivesNewFilesAListAndTheReplacedOneHasNone) {
    const TemporaryFolder folder;
    const fs::path path = folder.Write("out.csv", "before");
    ASSERT_EQ(chmod(path.c_str(), 0664), 0);
    if (!SetAttribute(folder.GetPath(), listForNewFiles, AccessListFor(61234, 6, 6))) {
        GTEST_SKIP() << "this file system keeps no such lists";
    }
    OutputFile output(path);
    EXPECT_EQ(ModeOf(FindTemporary(folder)), 0600);
    output.Commit();
    EXPECT_EQ(AttributeOf(path, accessList), std::nullopt);
    EXPECT_EQ(ModeOf(path), 0664);
}

TEST(OutputFile, IsLikeAnyOtherNewFile_WhenTheFolderGivesThemAList) {
    const TemporaryFolder folder;
    const mode_t before = umask(077);  // does not count in such a folder
    if (SetAttribute(folder.GetPath(), listForNewFiles, AccessListFor(61234, 7, 6))) {
        OutputFile output(folder / "out.csv");
        output.Commit();
        const fs::path other = folder.Write("other.csv", "");
        EXPECT_EQ(AttributeOf(folder / "out.csv", accessList), AttributeOf(other, accessList));
        EXPECT_EQ(ModeOf(folder / "out.csv"), ModeOf(other));
        EXPECT_EQ(ModeOf(other), 0660);
    }
    umask(before);
}

#endif

}  // namespace
}  // namespace nbscore::test
