#include "framework/VersionInfo.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

bool AreEqual(const ScoreVersionInfo& first, const ScoreVersionInfo& second) {
    return first == second;
}

TEST(VersionInfo, GivesTheTextItHolds) {
    VersionInfo version("2.1");
    EXPECT_EQ(version.GetVersionInfo(), "2.1");
    version.SetVersionInfo("3.0");
    EXPECT_EQ(version.GetVersionInfo(), "3.0");
}

TEST(VersionInfo, IsIndependentOfItsClone) {
    VersionInfo version("2.1");
    const std::unique_ptr<ScoreVersionInfo> clone(version.Clone());
    version.SetVersionInfo("3.0");

    EXPECT_EQ(clone->GetVersionInfo(), "2.1");
}

TEST(VersionInfo, IsEqual_WhenTheTextIsTheSame) {
    EXPECT_TRUE(AreEqual(VersionInfo("2.1"), VersionInfo("2.1")));
    EXPECT_FALSE(AreEqual(VersionInfo("2.1"), VersionInfo("2.10")));
    EXPECT_FALSE(AreEqual(VersionInfo("a"), VersionInfo("A")));
}

}  // namespace
