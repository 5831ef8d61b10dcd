#include "host/LoadedModel.h"

#include <gtest/gtest.h>

#include <sstream>

#include "framework/VeskException.h"
#include "output/HostError.h"
#include "support/Message.h"
#include "support/TemporaryFolder.h"
#include "support/documents/CompleteDocuments.h"

namespace nbscore::test {
namespace {

/// What reading refuses with; nothing of the plug-in is left by the time it is looked at.
VeskException ReadRefusal(const std::string& document) {
    try {
        LoadedModel::Read(PluginLibrary::Load(TROUBLE_PLUGIN), document);
    } catch (const VeskException& refusal) {
        return refusal;
    }
    ADD_FAILURE() << "nothing was refused";
    return {VeskException::UnexpectedElement, ""};
}

std::string GetReadFault(const std::string& document) {
    return GetMessageOf<InputOutputError>(
        [&document] { LoadedModel::Read(PluginLibrary::Load(TROUBLE_PLUGIN), document); });
}

TEST(LoadedModel, RefusalComesByValue_WhenThePluginThrowsAPointer) {
    const VeskException refusal = ReadRefusal("pointer");
    EXPECT_EQ(refusal.GetCode(), VeskException::InvalidContent);
    EXPECT_EQ(refusal.GetMessage(), "thrown as a pointer");
}

TEST(LoadedModel, RefusalComesAsItIs_WhenThePluginThrowsAValue) {
    EXPECT_EQ(ReadRefusal("value").GetCode(), VeskException::InvalidNumber);
}

TEST(LoadedModel, RefusalOutlivesThePlugin_WhenItsClassIsThePluginsOwn) {
    const VeskException refusal = ReadRefusal("refusal of its own");
    EXPECT_EQ(refusal.GetCode(), VeskException::InvalidContent);
    EXPECT_STREQ(refusal.what(), "refused at home");
}

TEST(LoadedModel, ErrorOutlivesThePlugin_WhenItsClassIsThePluginsOwn) {
    EXPECT_EQ(GetReadFault("error of its own"), "reading error of its own failed: made at home");
}

TEST(LoadedModel, ErrorIsReported_WhenItIsNoExceptionAtAll) {
    EXPECT_EQ(GetReadFault("number"), "reading number failed for a reason unknown");
}

TEST(LoadedModel, FailureIsOneOfInput_WhenTheSourceCannotBeRead) {
    EXPECT_EQ(GetReadFault("unreadable"), "no such thing");
}

TEST(LoadedModel, FailureIsReported_WhenThePluginGivesNoModel) {
    EXPECT_EQ(GetReadFault("nothing"), "reading nothing gave no model");
}

TEST(LoadedModel, ModelKeepsThePluginLoaded_WhenNothingElseDoes) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "small.pmml", TestDocument().Text());
    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), folder / "small.pmml");
    EXPECT_NO_THROW(model.RequireScorable());
    EXPECT_EQ(model.Get().GetTargetVar()->GetName(), "play");
    std::ostringstream dump;
    model.Get().Display(dump);
    EXPECT_FALSE(dump.str().empty());
}

TEST(LoadedModel, FailureIsOneOfInputWithItsPath_WhenThereIsNoDocument) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "none.pmml";
    const std::string message =
        GetMessageOf<InputOutputError>([&path] { LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), path); });
    EXPECT_EQ(message, "The file \"" + path.string() + "\" cannot be read: No such file or directory.");
}

TEST(LoadedModel, RefusalNamesItsPlace_WhenTheDocumentIsNoXml) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "bad.pmml", "<PMML>\n<DataDictionary>\n");
    try {
        LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), folder / "bad.pmml");
        FAIL() << "nothing was refused";
    } catch (const VeskException& refusal) {
        EXPECT_EQ(refusal.GetCode(), VeskException::MalformedDocument);
        EXPECT_EQ(refusal.GetPlace().source, (folder / "bad.pmml").string());
    }
}

}  // namespace
}  // namespace nbscore::test
