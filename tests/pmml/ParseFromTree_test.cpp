#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <random>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "framework/BaseModel.h"
#include "pmml/DocumentProbe.h"
#include "pmml/DomDocument.h"
#include "support/XmlName.h"

namespace {

namespace fs = std::filesystem;
using nbscore::XmlName;

/// A model that tells when it is freed.
class CountedModel : public BaseModel {
public:
    explicit CountedModel(int& liveModels) : live(liveModels) { ++live; }
    ~CountedModel() override { --live; }
    void SetPredictionOnly(bool) override {}
    ScoreDictionary* GetVarsOfRole(VarRole) const override { return nullptr; }
    MCScore::MCStatus GetScore(const ScoreCaseRecord*, ScoreResult*&, bool) override { return {}; }
    ModelType GetModelType() override { return NaiveBayesModel; }
    bool GetPredictionOnly() const override { return false; }
    void Display(std::ostream&) const override {}

private:
    int& live;
};

class ParseFromTree : public testing::Test {
protected:
    ParseFromTree() {
        fs::create_directories(folder);
        std::ofstream(file, std::ios::binary) << "<a>\n <b/></a>";
    }
    ~ParseFromTree() override { fs::remove_all(folder); }

    /// A translator that leaves a half-built model behind and then throws what it is given.
    template <typename Fault>
    DocumentProbe Failing(const Fault& fault) {
        return DocumentProbe([this, fault](DocumentProbe& self, xercesc::DOMDocument& document) -> ScoreModel* {
            self.LeaveUnfinishedModel(new CountedModel(liveModels));
            fault(document);
            return nullptr;
        });
    }
    DocumentProbe Building() {
        return DocumentProbe([this](DocumentProbe&, xercesc::DOMDocument&) { return new CountedModel(liveModels); });
    }
    static VeskException RefusalAt(const xercesc::DOMNode* node, VeskException::ExceptionCode code,
                                   const std::string& message) {
        VeskException refusal(code, message);
        refusal.SetPlace(nbscore::PlaceOf(node));
        return refusal;
    }
    static void RefuseAtB(const xercesc::DOMDocument& document) {
        throw RefusalAt(BaseTranslator::GetFirstChildElt(document.getDocumentElement()), VeskException::InvalidContent,
                        "wrong");
    }

    /// One of its own for each run of each test: tests run side by side.
    const fs::path folder =
        fs::temp_directory_path() / ("nbscore_parse_from_tree_" + std::to_string(std::random_device()()));
    const fs::path file = folder / fs::path(u8"mod\u00E8le.pmml");
    std::string Path() const {
        const std::u8string name = file.u8string();
        return {name.begin(), name.end()};
    }
    int liveModels = 0;
};

TEST_F(ParseFromTree, GivesTheModelToTheCaller_WhenEverythingIsFine) {
    DocumentProbe translator = Building();
    const std::unique_ptr<ScoreModel> fromFile(translator.ParseFromTree(Path(), "UTF-8"));
    std::istringstream stream("<a/>");
    const std::unique_ptr<ScoreModel> fromStream(translator.ParseFromTree(stream, "UTF-8"));
    std::istringstream named("<a/>");
    const std::unique_ptr<ScoreModel> fromNamed(translator.ParseFromTree(named, "UTF-8", "name"));
    EXPECT_EQ(liveModels, 3);
    EXPECT_EQ(translator.TakeUnfinishedModel(), nullptr);
}

TEST_F(ParseFromTree, HandsTheEncodingOn_WhenReadingAStream) {
    DocumentProbe translator([](DocumentProbe& self, xercesc::DOMDocument& document) -> ScoreModel* {
        EXPECT_EQ(self.GetTranscoder()->transcodeTo(
                      BaseTranslator::GetAttribute(document.getDocumentElement(), XmlName("x"))),
                  "\xE4");
        return nullptr;
    });
    std::istringstream stream("<a x='\xC3\xA4'/>");
    translator.ParseFromTree(stream, "ISO-8859-1");
}

TEST_F(ParseFromTree, NamesTheFile_WhenTheDocumentIsRefused) {
    DocumentProbe translator = Failing(RefuseAtB);
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(Path(), "UTF-8"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetMessage(), "wrong");
    EXPECT_EQ(refusal->GetPlace().source, Path());
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "2:2 /a/b[1]");
    EXPECT_EQ(liveModels, 0);
    EXPECT_EQ(translator.TakeUnfinishedModel(), nullptr);
}

TEST_F(ParseFromTree, NamesTheSource_WhenTheXmlIsBroken) {
    DocumentProbe translator = Building();
    std::istringstream stream("<a>");
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8", "stdin"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetPlace().source, "stdin");
    EXPECT_EQ(refusal->GetPlace().line, 1u);
}

TEST_F(ParseFromTree, UsesTheTranslatorsDocumentName_WhenAStreamHasNone) {
    DocumentProbe translator(
        [](DocumentProbe&, xercesc::DOMDocument& document) -> ScoreModel* {
            RefuseAtB(document);
            return nullptr;
        },
        "unnamed document");
    EXPECT_EQ(translator.GetDocumentName(), "unnamed document");
    std::istringstream stream("<a><b/></a>");
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetPlace().source, "unnamed document");
}

TEST_F(ParseFromTree, KeepsThePointer_WhenARefusalIsThrownAsOne) {
    VeskException* thrown = nullptr;
    DocumentProbe translator = Failing([&thrown](xercesc::DOMDocument& document) {
        thrown = new VeskException(RefusalAt(&document, VeskException::InconsistentDocument, "two"));
        throw thrown;
    });
    std::istringstream stream("<a/>");
    try {
        translator.ParseFromTree(stream, "UTF-8", "pointed");
        FAIL();
    } catch (VeskException* caught) {
        const std::unique_ptr<VeskException> owner(caught);
        EXPECT_EQ(caught, thrown);
        EXPECT_EQ(caught->GetPlace().source, "pointed");
        EXPECT_EQ(PlaceText(caught->GetPlace()), "1:1 /a");
        EXPECT_EQ(caught->GetMessage(), "two");
    }
    EXPECT_EQ(liveModels, 0);
}

TEST_F(ParseFromTree, LetsNothingOfTheXmlLibraryOut_WhenReadingTheDocumentFails) {
    DocumentProbe translator = Failing(
        [](xercesc::DOMDocument& document) { document.appendChild(document.createElement(XmlName("second-root"))); });
    std::istringstream stream("<a/>");
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8", "name"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetPlace().source, "name");
    EXPECT_EQ(liveModels, 0);

    DocumentProbe exhausted = Failing([](xercesc::DOMDocument&) { throw xercesc::OutOfMemoryException(); });
    std::istringstream again("<a/>");
    EXPECT_THROW(exhausted.ParseFromTree(again, "UTF-8"), std::bad_alloc);
    EXPECT_EQ(liveModels, 0);
}

TEST_F(ParseFromTree, FreesTheUnfinishedModel_WhenAForeignExceptionPasses) {
    DocumentProbe translator = Failing([](xercesc::DOMDocument&) { throw std::logic_error("foreign"); });
    std::istringstream stream("<a/>");
    EXPECT_THROW(translator.ParseFromTree(stream, "UTF-8"), std::logic_error);
    EXPECT_EQ(liveModels, 0);
}

TEST_F(ParseFromTree, LeavesTheUnfinishedModelToTheCaller_WhenADocumentIsHandedIn) {
    DocumentProbe translator = Failing(RefuseAtB);
    WithDocument("<a><b/></a>", [&](DocumentProbe&, xercesc::DOMDocument& document) {
        EXPECT_TRUE(RefusalOf([&] { translator.ParseFromTree(&document, "UTF-8"); }));
        EXPECT_EQ(liveModels, 1);
        EXPECT_TRUE(RefusalOf([&] { translator.ParseFromTree(&document, "UTF-8"); }));
        EXPECT_EQ(liveModels, 1);  // the earlier one was not taken and is freed
    });
    const std::unique_ptr<ScoreModel> unfinished(translator.TakeUnfinishedModel());
    EXPECT_NE(unfinished, nullptr);
    EXPECT_EQ(translator.TakeUnfinishedModel(), nullptr);
}

TEST_F(ParseFromTree, IsRefused_WhenTheTranslatorKnowsNoModel) {
    PMMLTranslator translator("");
    std::istringstream stream("<a/>");
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnexpectedElement);
    EXPECT_EQ(refusal->GetMessage(), "The document holds no model of a kind that is known here.");
}

void ExpectUnreadable(const std::string& path, const std::string& message) {
    DocumentProbe translator(nullptr);
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(path, "UTF-8"); });
    ASSERT_TRUE(refusal) << path;
    EXPECT_EQ(refusal->GetCode(), VeskException::UnreadableSource);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_EQ(refusal->GetPlace().source, path);
}

TEST_F(ParseFromTree, SaysWhy_WhenTheFileCannotBeRead) {
    ExpectUnreadable("/no/such/file.pmml",
                     "The file \"/no/such/file.pmml\" cannot be read: No such file or directory.");
    ExpectUnreadable("", "The file \"\" cannot be read: No such file or directory.");
    ExpectUnreadable(folder.string(), "The file \"" + folder.string() + "\" cannot be read: Is a directory.");
    const std::string under = Path() + "/x";
#ifndef _WIN32  // where there is just no such file
    ExpectUnreadable(under, "The file \"" + under + "\" cannot be read: Not a directory.");
#endif
    const std::string withZero = Path() + std::string("\0.txt", 5);
    ExpectUnreadable(withZero, "The file \"" + withZero + "\" cannot be read: Invalid argument.");
}

/// Gives some characters and then fails like a device that is pulled out.
class BrokenStream : public std::streambuf {
public:
    explicit BrokenStream(const std::string& start) : text(start) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("pulled out"); }

private:
    std::string text;
};

TEST_F(ParseFromTree, IsUnreadable_WhenTheStreamBreaksOff) {
    DocumentProbe translator = Building();
    for (const char* start : {"", "<a><b>", "<a/>"}) {
        BrokenStream buffer(start);
        std::istream stream(&buffer);
        const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8", "device"); });
        ASSERT_TRUE(refusal) << start;
        EXPECT_EQ(refusal->GetCode(), VeskException::UnreadableSource);
        EXPECT_EQ(refusal->GetMessage(), "The document cannot be read: the stream failed.");
        EXPECT_EQ(refusal->GetPlace().source, "device");
    }
    EXPECT_EQ(liveModels, 0);
}

TEST_F(ParseFromTree, IsUnreadable_WhenTheStreamNeverOpened) {
    std::ifstream stream("/no/such/file.pmml");
    DocumentProbe translator = Building();
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnreadableSource);
}

TEST_F(ParseFromTree, RefusesInItsOwnWay_WhenTheStreamIsSetToThrow) {
    DocumentProbe translator = Building();
    BrokenStream buffer("<a>");
    std::istream stream(&buffer);
    stream.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    const auto refusal = RefusalOf([&] { translator.ParseFromTree(stream, "UTF-8"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnreadableSource);

    std::istringstream whole("<a/>");
    whole.exceptions(std::ios::failbit | std::ios::eofbit);
    const std::unique_ptr<ScoreModel> model(translator.ParseFromTree(whole, "UTF-8"));
    EXPECT_NE(model, nullptr);
    EXPECT_EQ(whole.exceptions(), std::ios::failbit | std::ios::eofbit);
}

TEST_F(ParseFromTree, ReadsAgain_WhenAnEarlierDocumentWasRefused) {
    DocumentProbe translator = Building();
    for (int i = 0; i < 3; ++i) {
        std::istringstream broken("<a>");
        EXPECT_TRUE(RefusalOf([&] { translator.ParseFromTree(broken, "UTF-8"); }));
        std::istringstream whole("<a/>");
        const std::unique_ptr<ScoreModel> model(translator.ParseFromTree(whole, "UTF-8"));
        EXPECT_EQ(liveModels, 1);
    }
}

}  // namespace
