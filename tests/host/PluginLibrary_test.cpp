#include "host/PluginLibrary.h"

#include <gtest/gtest.h>

#include "output/HostError.h"
#include "support/Message.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

#ifdef _WIN32
constexpr const char* bundledName = "naivebayes.dll";
#else
constexpr const char* bundledName = "libnaivebayes.so";
#endif

std::string GetLoadFault(const std::filesystem::path& path) {
    return GetMessageOf<InputOutputError>([&path] { PluginLibrary::Load(path); });
}

TEST(PluginLibrary, GivesATranslator_WhenItIsAPlugin) {
    const auto plugin = PluginLibrary::Load(TROUBLE_PLUGIN);
    EXPECT_NE(plugin->MakeTranslator(), nullptr);
}

TEST(PluginLibrary, KnowsTheStandardsRule_WhereItExportsThatFactory) {
    EXPECT_TRUE(PluginLibrary::Load(NAIVEBAYES_PLUGIN)->Knows(ScoringRule::Standard));
    EXPECT_NE(PluginLibrary::Load(NAIVEBAYES_PLUGIN)->MakeTranslator(ScoringRule::Standard), nullptr);
    const auto without = PluginLibrary::Load(TROUBLE_PLUGIN);
    EXPECT_FALSE(without->Knows(ScoringRule::Standard));
    EXPECT_EQ(GetMessageOf<InputOutputError>([&without] { without->MakeTranslator(ScoringRule::Standard); }),
              std::string(TROUBLE_PLUGIN) +
                  " does not know the standard's rule: it exports no function GiveMyStandardTranslator");
}

TEST(PluginLibrary, IsRefusedWithItsPath_WhenThereIsNoFile) {
    const TemporaryFolder folder;
    const std::string message = GetLoadFault(folder / "none.so");
    EXPECT_TRUE(message.starts_with("cannot load " + (folder / "none.so").string() + ": ")) << message;
}

TEST(PluginLibrary, IsRefused_WhenTheFileIsNoLibrary) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "text.so", "no library at all");
    const std::string message = GetLoadFault(folder / "text.so");
    EXPECT_TRUE(message.starts_with("cannot load " + (folder / "text.so").string() + ": ")) << message;
    EXPECT_TRUE(GetLoadFault(folder.GetPath()).starts_with("cannot load "));
}

TEST(PluginLibrary, IsRefused_WhenTheLibraryHasNoFactory) {
    EXPECT_EQ(GetLoadFault(FRAMEWORK_LIBRARY),
              std::string(FRAMEWORK_LIBRARY) + " is no plug-in: it exports no function GiveMyTranslator");
}

TEST(PluginLibrary, IsNotSearchedForInTheSystem_WhenThePathIsABareName) {
    const std::string message = GetLoadFault("libc.so.6");
    EXPECT_TRUE(message.starts_with("cannot load libc.so.6: ")) << message;
}

TEST(PluginLibrary, IsFoundBesideTheProgram_BeforeTheLibraryFolder) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "bin");
    std::filesystem::create_directories(folder / "lib");
    WriteWholeFile(folder / "lib" / bundledName, "");
    EXPECT_EQ(PluginLibrary::FindBundled({folder / "bin", folder / "bin/../lib"}), folder / "lib" / bundledName);
    WriteWholeFile(folder / "bin" / bundledName, "");
    EXPECT_EQ(PluginLibrary::FindBundled({folder / "bin", folder / "bin/../lib"}), folder / "bin" / bundledName);
}

TEST(PluginLibrary, MessageNamesThePlaces_WhenItIsInNone) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "bin");
    std::filesystem::create_directories(folder / "bin" / bundledName);  // a folder of that name is no library
    const std::string message = GetMessageOf<InputOutputError>([&folder] {
        PluginLibrary::FindBundled({folder / "bin", folder / "lib"});
    });
    EXPECT_NE(message.find((folder / "bin" / bundledName).string()), std::string::npos) << message;
    EXPECT_NE(message.find((folder / "lib" / bundledName).string()), std::string::npos) << message;
}

TEST(PluginLibrary, BundledOneIsFound_FromTheBuildTree) {
    EXPECT_TRUE(std::filesystem::equivalent(PluginLibrary::FindBundled(), NAIVEBAYES_PLUGIN));
}

}  // namespace
}  // namespace nbscore::test
