#include "framework/Limits.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "framework/UsableMemory.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

TEST(Limits, LetEverythingGoOn_WhenNobodyCancels) {
    EXPECT_NO_THROW(Limits().ThrowIfCancelled());
    Limits limits;
    limits.isCancelled = [] { return false; };
    EXPECT_NO_THROW(limits.ThrowIfCancelled());
    limits.isCancelled = [] { return true; };
    EXPECT_THROW(limits.ThrowIfCancelled(), CancelledError);
}

TEST(Limits, AreHalfOfTheMemory_WhenNothingElseIsSaid) {
    EXPECT_EQ(Limits().GetMemory(), UsableMemory() / 2);
    Limits limits;
    limits.maxMemory = 1000;
    EXPECT_EQ(limits.GetMemory(), 1000U);
}

TEST(LimitWatch, AsksAtSomeOfTheSteps) {
    int asked = 0;
    Limits limits;
    limits.isCancelled = [&asked] { return ++asked == 3; };
    LimitWatch watch(limits);
    for (std::size_t i = 0; i < 3 * LimitWatch::stepsPerQuestion - 1; ++i)
        watch.Step();
    EXPECT_EQ(asked, 2);
    EXPECT_THROW(watch.Step(), CancelledError);
}

TEST(LimitWatch, AsksAtOnce_WhenManyStepsWereDone) {
    Limits limits;
    limits.isCancelled = [] { return true; };
    EXPECT_THROW(LimitWatch(limits).Step(LimitWatch::stepsPerQuestion), CancelledError);
}

#ifndef _WIN32

/// Files as the system has them for the groups of processes, with limits far below any machine's memory.
class ControlGroups : public testing::Test {
protected:
    void Write(const std::string& path, const std::string& text) {
        std::filesystem::create_directories((folder.GetPath() / path).parent_path());
        folder.Write(path, text);
    }
    std::uint64_t Find() const { return UsableMemory(folder.GetPath()); }

    TemporaryFolder folder;
    const std::uint64_t withoutGroups = UsableMemory(folder.GetPath());
};

TEST_F(ControlGroups, BoundTheMemory_WhenTheyAreOfTheNewerKind) {
    Write("proc/self/cgroup", "0::/users/anna\n");
    EXPECT_EQ(Find(), withoutGroups);
    Write("sys/fs/cgroup/users/anna/memory.max", "max\n");
    EXPECT_EQ(Find(), withoutGroups);
    Write("sys/fs/cgroup/users/anna/memory.max", "1000\n");
    EXPECT_EQ(Find(), 1000U);
    Write("sys/fs/cgroup/users/memory.max", "800\n");
    EXPECT_EQ(Find(), 800U);
}

TEST_F(ControlGroups, BoundTheMemory_WhenTheyAreOfTheOlderKind) {
    Write("proc/self/cgroup", "5:cpu,cpuacct:/a\n4:hugetlb,memory:/users/anna\n0::/\n");
    Write("sys/fs/cgroup/memory/a/memory.limit_in_bytes", "1\n");
    EXPECT_EQ(Find(), withoutGroups);
    Write("sys/fs/cgroup/memory/users/anna/memory.limit_in_bytes", "9223372036854771712\n");
    EXPECT_EQ(Find(), withoutGroups);
    Write("sys/fs/cgroup/memory/users/anna/memory.limit_in_bytes", "1000\n");
    EXPECT_EQ(Find(), 1000U);
}

/// Inside a container, the group's name may be one that only the outside knows.
TEST_F(ControlGroups, BoundTheMemory_WhenOnlyTheTopmostIsSeen) {
    Write("proc/self/cgroup", "4:memory:/docker/0123\n");
    Write("sys/fs/cgroup/memory/memory.limit_in_bytes", "1000\n");
    EXPECT_EQ(Find(), 1000U);
    Write("proc/self/cgroup", "0::/docker/0123\n");
    Write("sys/fs/cgroup/memory.max", "900\n");
    EXPECT_EQ(Find(), 900U);
}

TEST_F(ControlGroups, DoNotBoundTheMemory_WhenTheirFilesHoldSomethingElse) {
    Write("proc/self/cgroup", "\nnothing\n7:memory\n6:memory:users\n4:memory:/users\n");
    Write("sys/fs/cgroup/memory/users/memory.limit_in_bytes", "little\n");
    EXPECT_EQ(Find(), withoutGroups);
}

#endif

}  // namespace
}  // namespace nbscore::test
