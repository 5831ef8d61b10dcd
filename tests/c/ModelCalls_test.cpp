// Opening, describing, checking and closing through the C interface.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "c/Handles.h"
#include "check/DocumentCheck.h"
#include "host/PluginLibrary.h"
#include "support/InThreads.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const std::string titanic = NBSCORE_EXAMPLES "/titanic/titanic.pmml";
const std::string refused = NBSCORE_CASES_DIR "/refused-threshold-zero/document.pmml";

std::string CheckHere(const std::string& document, ScoringRule rule = ScoringRule::Smoothed) {
    return WriteChecksAsJson(
        {CheckDocument(PluginLibrary::Load(NAIVEBAYES_PLUGIN), std::filesystem::path(document), false, {}, rule)});
}

TEST(CLibrary, IsOfTheHeadersVersion) {
    EXPECT_EQ(NBSCORE_ABI, nbscore_abi());
    EXPECT_STREQ("0.1.0", nbscore_version());
}

TEST(CModel, IsDescribedAsACheckDescribesIt_WhenItIsOpen) {
    const ModelHandle model = OpenFile(titanic);
    ErrorHandle error;
    const TextHandle json = Give<TextHandle>(error, nbscore_describe, model.get());
    ASSERT_EQ(nullptr, error);
    const std::string whole = CheckHere(titanic);
    // All but what only the document tells.
    const std::string begin = whole.substr(0, whole.find("\"problems\""));
    EXPECT_EQ(begin, std::string(json.get()).substr(0, begin.size()));
}

TEST(CModel, IsTheSame_WhenTheDocumentIsInMemory) {
    const std::string bytes = ReadWholeFile(titanic);
    ErrorHandle error;
    const ModelHandle model =
        Give<ModelHandle>(error, nbscore_open_memory, bytes.data(), bytes.size(), titanic.c_str(), nullptr);
    ASSERT_NE(nullptr, model);
    const TextHandle json = Give<TextHandle>(error, nbscore_describe, model.get());
    const TextHandle ofFile = Give<TextHandle>(error, nbscore_describe, OpenFile(titanic).get());
    EXPECT_STREQ(ofFile.get(), json.get());
}

TEST(CModel, IsRefusedWithCodeAndPlace_WhenItsDocumentIs) {
    ErrorHandle error;
    const ModelHandle model = Give<ModelHandle>(error, nbscore_open_file, refused.c_str(), nullptr);
    EXPECT_EQ(nullptr, model);
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_REFUSED, error->kind);
    EXPECT_EQ(5, error->code);
    EXPECT_STREQ("Threshold can't be zero!", error->message);
    EXPECT_THAT(error->advice, HasSubstr("--rule standard"));
    EXPECT_EQ(refused, error->file);
    EXPECT_STREQ("/PMML/NaiveBayesModel[1]", error->path);
    EXPECT_GT(error->line, 0U);
    EXPECT_GT(error->column, 0U);
}

TEST(CModel, IsNamedByTheCaller_WhenItsDocumentInMemoryIsRefused) {
    ErrorHandle error;
    Give<ModelHandle>(error, nbscore_open_memory, "<PMML", std::size_t{5}, "from the database", nullptr);
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_REFUSED, error->kind);
    EXPECT_STREQ("from the database", error->file);
}

TEST(CModel, IsAdvisedAsItsFileWouldBe_WhenItsDocumentInMemoryIsRefused) {
    // Of the second one the advice is to adapt it.
    for (const std::string& document : {refused, std::string(NBSCORE_FAULT_DOCUMENTS "/newer-producer.pmml")}) {
        const std::string bytes = ReadWholeFile(document);
        ErrorHandle ofFile;
        Give<ModelHandle>(ofFile, nbscore_open_file, document.c_str(), nullptr);
        ErrorHandle ofMemory;
        Give<ModelHandle>(ofMemory, nbscore_open_memory, bytes.data(), bytes.size(), "no file", nullptr);
        ASSERT_NE(nullptr, ofFile);
        ASSERT_NE(nullptr, ofMemory);
        EXPECT_STREQ(ofFile->advice, ofMemory->advice);
    }
}

TEST(CModel, IsRefused_WhenItCannotScoreEveryCase) {
    ErrorHandle error;
    const std::string document = NBSCORE_CASES_DIR "/refused-target-without-values/document.pmml";
    EXPECT_EQ(nullptr, Give<ModelHandle>(error, nbscore_open_file, document.c_str(), nullptr));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_REFUSED, error->kind);
    EXPECT_EQ(12, error->code);
    EXPECT_EQ(document, error->file);
}

TEST(CModel, IsUnreadable_WhenThereIsNoFile) {
    ErrorHandle error;
    EXPECT_EQ(nullptr, Give<ModelHandle>(error, nbscore_open_file, "no such file", nullptr));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_UNREADABLE, error->kind);
    EXPECT_THAT(error->message, HasSubstr("no such file"));
}

TEST(CModel, IsReadByTheStandardsRule_WhenItIsAskedFor) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.rule = NBSCORE_RULE_STANDARD;
    const ModelHandle model = OpenFile(refused, &reading);
    ErrorHandle error;
    const TextHandle json = Give<TextHandle>(error, nbscore_describe, model.get());
    EXPECT_THAT(json.get(), HasSubstr("\"rule\": \"standard\""));
}

TEST(CModel, IsRefused_WhenItsDocumentIsLongerThanAllowed) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.max_document_bytes = 100;
    ErrorHandle error;
    EXPECT_EQ(nullptr, Give<ModelHandle>(error, nbscore_open_file, titanic.c_str(), &reading));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(12, error->code);
    EXPECT_THAT(error->message, HasSubstr("max-document-bytes"));
}

TEST(CModel, IsNotRead_WhenTheCallerCancels) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    int asked = 0;
    reading.cancel_data = &asked;
    reading.is_cancelled = [](void* data) { return ++*static_cast<int*>(data); };
    ErrorHandle error;
    EXPECT_EQ(nullptr, Give<ModelHandle>(error, nbscore_open_file, titanic.c_str(), &reading));
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_CANCELLED, error->kind);
    EXPECT_GT(asked, 0);
}

TEST(CCheck, IsTheCommands_WhateverTheDocument) {
    for (const std::string& document : {titanic, refused, std::string("no such file")}) {
        ErrorHandle error;
        const TextHandle json = Give<TextHandle>(error, nbscore_check_file, document.c_str(), nullptr);
        ASSERT_EQ(nullptr, error);
        EXPECT_EQ(CheckHere(document), json.get());
    }
}

TEST(CCheck, IsTheSame_WhenTheDocumentIsInMemory) {
    for (const std::string& document : {titanic, refused}) {
        const std::string bytes = ReadWholeFile(document);
        ErrorHandle error;
        const TextHandle json =
            Give<TextHandle>(error, nbscore_check_memory, bytes.data(), bytes.size(), document.c_str(), nullptr);
        ASSERT_EQ(nullptr, error);
        EXPECT_EQ(CheckHere(document), json.get());
    }
}

TEST(CArguments, AreRefusedByName_WhenTheyAreNull) {
    const auto messageOf = [](const auto& call) {
        nbscore_error* failure = nullptr;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, call(&failure));
        const ErrorHandle error(failure);
        return error == nullptr ? std::string() : std::string(error->message);
    };
    nbscore_model* model = nullptr;
    char* json = nullptr;
    EXPECT_EQ("path is null.", messageOf([&](auto e) { return nbscore_open_file(nullptr, nullptr, &model, e); }));
    EXPECT_EQ("model is null.", messageOf([&](auto e) { return nbscore_open_file("x", nullptr, nullptr, e); }));
    EXPECT_EQ("bytes is null.",
              messageOf([&](auto e) { return nbscore_open_memory(nullptr, 1, "x", nullptr, &model, e); }));
    EXPECT_EQ("name is null.",
              messageOf([&](auto e) { return nbscore_open_memory("x", 1, nullptr, nullptr, &model, e); }));
    EXPECT_EQ("model is null.", messageOf([&](auto e) { return nbscore_describe(nullptr, &json, e); }));
    EXPECT_EQ("json is null.", messageOf([&](auto e) { return nbscore_describe(nullptr, nullptr, e); }));
    EXPECT_EQ("path is null.", messageOf([&](auto e) { return nbscore_check_file(nullptr, nullptr, &json, e); }));
    EXPECT_EQ("name is null.",
              messageOf([&](auto e) { return nbscore_check_memory("x", 1, nullptr, nullptr, &json, e); }));
}

TEST(CArguments, MayBeNull_WhereNothingIsToBeFreedOrTold) {
    nbscore_close(nullptr);
    nbscore_error_free(nullptr);
    nbscore_text_free(nullptr);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_open_file(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_check_memory(nullptr, 0, "nothing", nullptr, nullptr, nullptr));
}

TEST(COptions, AreRefused_WhenTheirSizeOrAChoiceIsUnknown) {
    const auto kindOf = [](const nbscore_reading& reading) {
        nbscore_model* model = nullptr;
        const std::int32_t kind = nbscore_open_file(titanic.c_str(), &reading, &model, nullptr);
        nbscore_close(model);
        return kind;
    };
    const nbscore_reading usual = NBSCORE_READING_INIT;
    EXPECT_EQ(NBSCORE_OK, kindOf(usual));
    nbscore_reading wrong = usual;
    wrong.size = 0;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrong));
    wrong.size = SIZE_MAX;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrong));
    for (std::int32_t nbscore_reading::*choice : {&nbscore_reading::rule, &nbscore_reading::adapt,
                                                  &nbscore_reading::plain_densities, &nbscore_reading::reserved}) {
        wrong = usual;
        wrong.*choice = 2;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrong));
        wrong.*choice = -1;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrong));
    }
}

TEST(COptions, MayBeThoseOfANewerHeader_AsLongAsTheyAskForNothingNew) {
    struct Newer {
        nbscore_reading known = NBSCORE_READING_INIT;
        std::uint64_t added = 0;
    } newer;
    newer.known.size = sizeof(Newer);
    EXPECT_NE(nullptr, OpenFile(titanic, &newer.known));
    newer.added = 1;
    ErrorHandle error;
    Give<ModelHandle>(error, nbscore_open_file, titanic.c_str(), &newer.known);
    ASSERT_NE(nullptr, error);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, error->kind);
}

TEST(CModel, IsDescribedAlike_OnManyThreads) {
    const ModelHandle model = OpenFile(titanic);
    ErrorHandle error;
    const TextHandle expected = Give<TextHandle>(error, nbscore_describe, model.get());
    InThreads([&](int) {
        ErrorHandle ofThread;
        const TextHandle json = Give<TextHandle>(ofThread, nbscore_describe, model.get());
        EXPECT_STREQ(expected.get(), json.get());
        return 0;
    });
}

}  // namespace
}  // namespace nbscore::test
