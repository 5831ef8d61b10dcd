#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "framework/Limits.h"
#include "pmml/DocumentFile.h"
#include "pmml/DocumentProbe.h"
#include "support/TemporaryFolder.h"
#include "support/TreeOf.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace nbscore::test {
namespace {

/// Of some hundred thousand bytes, so that the parser reads several times.
std::string LongDocument(const std::string& prefix = "") {
    std::string text = "<" + prefix + "PMML xmlns:p=\"http://www.dmg.org/PMML-4_4\">\n";
    for (int i = 0; i < 10'000; ++i)
        text += "<" + prefix + "Value value=\"" + std::to_string(i) + "\"/>\n";
    return text + "</" + prefix + "PMML>\n";
}

TEST(ReadingLimits, LetADocumentThroughThatIsJustShortEnough) {
    for (const std::string& text : {std::string("<PMML/>"), LongDocument()}) {
        Limits limits;
        limits.maxDocumentBytes = text.size();
        EXPECT_NE(TreeOf(text, limits), nullptr);
        --*limits.maxDocumentBytes;
        const auto refusal = RefusalOf([&] { TreeOf(text, limits); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetCode(), 12);
        EXPECT_EQ(refusal->GetMessage(), "The document is longer than max-document-bytes allows: " +
                                             std::to_string(text.size() - 1) + " bytes.");
        EXPECT_GT(refusal->GetPlace().line, 0U);
    }
}

TEST(ReadingLimits, RefuseADocumentWhereItsElementsTakeTooMuchMemory) {
    const std::string text = LongDocument();
    Limits limits;
    limits.maxMemory = 500'000;
    const auto refusal = RefusalOf([&] { TreeOf(text, limits); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), 12);
    EXPECT_EQ(refusal->GetMessage(), "The document needs more memory than max-memory allows: 500000 bytes.");
    EXPECT_GT(refusal->GetPlace().line, 100U);
    EXPECT_LT(refusal->GetPlace().line, 10'000U);

    limits.maxMemory = 1'500'000;
    const ParsedDocument document = TreeOf(text, limits);
    EXPECT_GT(document->GetMemory(), 400'000U);
    EXPECT_LT(document->GetMemory(), 600'000U);
}

TEST(ReadingLimits, RefuseADocument_WhenMemoryDoesNotEvenSufficeForTheParser) {
    for (const std::uint64_t bytes : {0U, 1U, 1000U, 100'000U}) {
        Limits limits;
        limits.maxMemory = bytes;
        const auto refusal = RefusalOf([&] { TreeOf("<PMML/>", limits); });
        ASSERT_TRUE(refusal) << bytes;
        EXPECT_EQ(refusal->GetCode(), 12);
    }
}

/// Wherever it is cancelled, also where a prefix is taken off every element.
TEST(ReadingLimits, EndTheParsing_WhenItIsCancelled) {
    for (const std::string& text : {LongDocument(), LongDocument("p:")}) {
        int questions = 0;
        for (bool isCancelled = true; isCancelled; ++questions) {
            Limits limits;
            int asked = 0;
            limits.isCancelled = [&] { return ++asked > questions; };
            try {
                TreeOf(text, limits);
                isCancelled = false;
            } catch (const CancelledError&) {
                EXPECT_EQ(asked, questions + 1);
            }
        }
        EXPECT_GT(questions, 4);
    }
}

TEST(ReadingLimits, EndAWalkThroughTheDocument_WhenItIsCancelled) {
    bool isCancelled = false;
    Limits limits;
    limits.isCancelled = [&isCancelled] { return isCancelled; };
    const ParsedDocument document = TreeOf(LongDocument(), limits);
    EXPECT_EQ(document->GetRoot().GetDescendants(Name::Value).List().size(), 10'000U);
    isCancelled = true;
    EXPECT_THROW(document->GetRoot().GetDescendants(Name::Value).List(), CancelledError);
    EXPECT_THROW(document->GetRoot().GetChildren(Name::Interval).List(), CancelledError);
}

TEST(ReadingLimits, AreTheTranslators) {
    DocumentProbe probe([](DocumentProbe&, xercesc::DOMDocument&) -> ScoreModel* { return nullptr; });
    Limits limits;
    limits.maxDocumentBytes = 6;
    probe.SetLimits(limits);
    EXPECT_EQ(*probe.GetLimits().maxDocumentBytes, 6U);
    std::istringstream stream("<PMML/>");
    EXPECT_TRUE(RefusalOf([&] { probe.ParseFromTree(stream, "UTF-8"); }));
    const TemporaryFolder folder;
    const std::string path = folder.Write("model.pmml", "<PMML/>").string();
    EXPECT_TRUE(RefusalOf([&] { probe.ParseFromTree(path, "UTF-8"); }));
    probe.SetLimits({});
    EXPECT_FALSE(RefusalOf([&] { probe.ParseFromTree(path, "UTF-8"); }));
}

#ifndef _WIN32

/// Whether nobody has opened the pipe to write to it, or somebody has and writes nothing.
TEST(ReadingLimits, EndTheWaitForASilentPipe_WhenItIsCancelled) {
    const TemporaryFolder folder;
    const std::string path = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    for (const bool hasWriter : {false, true}) {
        int asked = 0;
        Limits limits;
        limits.isCancelled = [&asked] { return ++asked > 5; };
        DocumentFile file(path, limits);
        std::ofstream writer;
        if (hasWriter) writer.open(path);
        EXPECT_THROW(ParseDocument(file.GetStream(), limits), CancelledError);
        EXPECT_NO_THROW(DocumentFile(path, {})) << "opening it waits for nobody";
    }
}

TEST(ReadingLimits, LetADocumentThroughThatComesSlowlyFromAPipe) {
    const TemporaryFolder folder;
    const std::string path = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    DocumentFile file(path, {});
    std::ofstream writer(path);
    std::thread slow([&writer] {
        for (const char* piece : {"<PM", "ML>", "<Header/>", "</PMML>"}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            writer << piece << std::flush;
        }
        writer.close();
    });
    EXPECT_NO_THROW(ParseDocument(file.GetStream()));
    slow.join();
}

#endif

}  // namespace
}  // namespace nbscore::test
