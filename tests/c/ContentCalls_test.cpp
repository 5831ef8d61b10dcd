// What a model holds, and how a document's own test cases come out, through the C interface.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "c/Handles.h"
#include "host/LoadedModel.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

const std::string titanic = NBSCORE_EXAMPLES "/titanic/titanic.pmml";
const std::string offers = NBSCORE_EXAMPLES "/offers/offers.pmml";
const std::string iris = NBSCORE_EXAMPLES "/iris/iris.pmml";
const std::string refused = NBSCORE_CASES_DIR "/refused-threshold-zero/document.pmml";

/// Without the blanks and line ends between its parts.
std::string ContentOf(const std::string& document) {
    ErrorHandle error;
    const TextHandle json = Give<TextHandle>(error, nbscore_content, OpenFile(document).get());
    std::string text;
    for (const char* c = json.get(); *c != '\0'; ++c) {
        if (*c != ' ' && *c != '\n') text += *c;
    }
    return text;
}

std::string Verify(const std::string& text, ErrorHandle& error) {
    const TextHandle json = Give<TextHandle>(error, nbscore_verify_memory, text.data(), text.size(), "model", nullptr);
    return json == nullptr ? std::string() : json.get();
}

TEST(CContent, TellsCategoriesClassesAndWhatCasesMustHave) {
    const std::string content = ContentOf(titanic);
    EXPECT_THAT(content, HasSubstr("\"name\":\"sex\",\"values\":\"texts\",\"continuous\":false,\"derived\":false,"
                                   "\"role\":\"input\",\"read\":true,\"needed\":true,"
                                   "\"categories\":[\"male\",\"female\"],\"bins\":null"));
    EXPECT_THAT(content, HasSubstr("\"role\":\"target\",\"read\":false,\"needed\":false"));
    EXPECT_THAT(content, HasSubstr("\"target\":\"survived\",\"target_values\":\"texts\",\"classes\":[\"no\",\"yes\"],"
                                   "\"sub_models\":null,\"output\":false"));
}

TEST(CContent, TellsTheCutpointsOfBins) {
    EXPECT_THAT(ContentOf(iris), HasSubstr("\"categories\":null,\"bins\":[2.45,4.75]"));
}

TEST(CContent, TellsTheSubModelsOfASet) {
    const std::string content = ContentOf(offers);
    EXPECT_THAT(content, HasSubstr("\"classes\":null,\"sub_models\":[\"travel_card\",\"savings_plan\","));
}

TEST(CDisplay, IsTheModelsOwn) {
    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), titanic);
    std::ostringstream shown;
    model.Get().Display(shown);
    ErrorHandle error;
    EXPECT_EQ(shown.str(), Give<TextHandle>(error, nbscore_display, OpenFile(titanic).get()).get());
}

TEST(CVerification, TellsWhatDiffers) {
    const std::string text = ReadWholeFile(titanic);
    ErrorHandle error;
    EXPECT_EQ("{\"document\": \"model\", \"differences\": [], \"rows\": 8, \"cells\": 24}\n", Verify(text, error));
    std::string changed = text;
    const std::size_t place = changed.find(">yes<", changed.find("<ModelVerification"));
    changed.replace(place, 5, ">no<");
    EXPECT_THAT(Verify(changed, error), HasSubstr("\"expected\": \"no\", \"actual\": \"yes\""));
    const TextHandle ofFile = Give<TextHandle>(error, nbscore_verify_file, titanic.c_str(), nullptr);
    EXPECT_THAT(ofFile.get(), HasSubstr("\"rows\": 8"));
}

TEST(CVerification, IsAnError_WhenTheDocumentIsRefused) {
    ErrorHandle error;
    EXPECT_EQ(nullptr, Give<TextHandle>(error, nbscore_verify_file, refused.c_str(), nullptr));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_REFUSED, error->kind);
}

TEST(CModel, SaysNothingOnStandardError_WhenItIsRefused) {
    testing::internal::CaptureStderr();
    ErrorHandle error;
    const std::string mails = NBSCORE_EXAMPLES "/mail/mail_with_length.pmml";
    EXPECT_EQ(nullptr, Give<ModelHandle>(error, nbscore_open_file, mails.c_str(), nullptr));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(CContent, IsAnError_WhenThereIsNoModel) {
    ErrorHandle error;
    EXPECT_EQ(nullptr, Give<TextHandle>(error, nbscore_content, static_cast<const nbscore_model*>(nullptr)));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, error->kind);
    EXPECT_EQ(nullptr, Give<TextHandle>(error, nbscore_display, static_cast<const nbscore_model*>(nullptr)));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, error->kind);
}

}  // namespace
}  // namespace nbscore::test
