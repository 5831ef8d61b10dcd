#include "cli/verbs/Arguments.h"

#include <gtest/gtest.h>

#include <iterator>

#include "output/HostError.h"
#include "support/TemporaryFolder.h"

namespace nbscore {

TEST(CaseInput, ReadsTheWholeFile_WhenItIsLongerThanItsBuffer) {
    const test::TemporaryFolder folder;
    std::string content;
    while (content.size() < 300000)
        content += std::to_string(content.size()) + ',';
    CaseInput input(folder.Write("cases.csv", content).string());

    const std::string read{std::istreambuf_iterator<char>(input.GetStream()), {}};

    EXPECT_EQ(read, content);
}

TEST(CaseInput, KnowsNameAndSize_WhenItIsAFile) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("cases.csv", "a,b\n1,2\n").string();
    const CaseInput input(path);

    EXPECT_EQ(input.GetName(), path);
    EXPECT_EQ(input.GetSize(), 8U);
    EXPECT_FALSE(input.IsTyped());
}

TEST(CaseInput, IsCalledByItsEverydayName_WhenItIsStandardInput) {
    EXPECT_EQ(CaseInput("-").GetName(), "standard input");
}

TEST(CaseInput, HasNoSize_WhenItIsNoRegularFile) {
    EXPECT_EQ(CaseInput("/dev/null").GetSize(), std::nullopt);
}

TEST(CaseInput, SaysWhy_WhenTheFileIsNotThere) {
    try {
        CaseInput input("/nowhere/cases.csv");
        FAIL() << "opened";
    } catch (const InputOutputError& error) {
        EXPECT_STREQ(error.what(), "cannot read /nowhere/cases.csv: No such file or directory");
    }
}

TEST(CaseInput, SaysWhyOutOfTheRead_WhenReadingFails) {
    const test::TemporaryFolder folder;
    try {
        CaseInput input(folder.GetPath().string());  // where folders can be opened, reading fails
        input.GetStream().peek();
        FAIL() << "read a folder";
    } catch (const InputOutputError& error) {
        EXPECT_EQ(error.what(), "cannot read " + folder.GetPath().string() + ": Is a directory");
    }
}

}  // namespace nbscore
