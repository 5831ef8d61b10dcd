// Every refusal says where the element at fault begins and which it is; and every message that a document can be
// refused with has a document that is.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "check/DocumentCheck.h"
#include "framework/VeskException.h"
#include "host/ElementOffset.h"
#include "host/RefusedSamples.h"
#include "host/SourceDocument.h"
#include "host/SourceMessages.h"
#include "support/TemporaryFolder.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

/// LINE:COLUMN of a byte of a text, both from 1.
std::string LineAndColumn(const std::string& text, std::size_t offset) {
    const std::size_t lineBegin = offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1;
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
    return std::to_string(line) + ":" + std::to_string(offset - lineBegin + 1);
}

std::string LineAndColumn(const DocumentPlace& place) {
    return place.line == 0 ? std::string() : std::to_string(place.line) + ":" + std::to_string(place.column);
}

/// @param expected as in RefusedSample.
void ExpectPlace(const DocumentPlace& place, const std::string& document, const std::string& expected,
                 const std::string& message) {
    if (!expected.starts_with('/')) {
        EXPECT_EQ(place.elementPath, "") << message;
        EXPECT_EQ(LineAndColumn(place), expected) << message;
        return;
    }
    EXPECT_EQ(place.elementPath, expected) << message;
    const auto offset = ElementOffset(document, expected);
    ASSERT_TRUE(offset) << expected << ' ' << message;
    EXPECT_EQ(LineAndColumn(place), LineAndColumn(document, *offset)) << message;
}

class RefusalPlaces : public testing::Test {
protected:
    DocumentProblem ProblemOf(const RefusedSample& sample) const {
        const DocumentCheck check =
            CheckDocument(plugin, folder.Write("document.pmml", sample.document), sample.adapt, sample.limits);
        EXPECT_FALSE(check.problems.empty()) << sample.place << ' ' << sample.document;
        return check.problems.empty() ? DocumentProblem() : check.problems.front();
    }

    VeskException RefusalOf(const RefusedTestCases& sample) const {
        try {
            SourceDocument::Read(folder.Write("document.pmml", sample.document).string()).ReadVerification();
        } catch (const VeskException& refusal) {
            return refusal;
        }
        ADD_FAILURE() << sample.document;
        return {VeskException::MalformedDocument, ""};
    }

    TemporaryFolder folder;
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

TEST_F(RefusalPlaces, AreThoseOfTheElementAtFault) {
    for (const RefusedSample& sample : RefusedSamples()) {
        const DocumentProblem problem = ProblemOf(sample);
        ExpectPlace(problem.place, sample.document, sample.place, problem.message);
    }
}

TEST_F(RefusalPlaces, AreThoseOfTheElementAtFault_InTestCases) {
    for (const RefusedTestCases& sample : RefusedTestCaseSamples()) {
        const VeskException refusal = RefusalOf(sample);
        ExpectPlace(refusal.GetPlace(), sample.document, sample.place, refusal.GetMessage());
    }
}

/// Files whose texts are no refusals: what is written for people who look at a model, remarks and
/// verification, which have tests of their own, the table of refusals, and names of the system's files.
const std::set<std::string> otherFiles = {"framework/BaseDictVarPrint.cpp", "ignored/IgnoredFieldRules.cpp",
                                          "ignored/IgnoredInputs.cpp",      "ignored/IgnoredConstructs.cpp",
                                          "ignored/IgnoredModels.cpp",      "framework/UsableMemory.cpp",
                                          "verify/ModelVerifier.cpp",       "verify/VerifiedValue.cpp",
                                          "pmml/RefusalTable.cpp",          "framework/VeskException.h"};

/// Functions are described where they are computed, under headings; the page about them shows those texts.
bool MayDescribeFunctions(const std::string& file) {
    return file.starts_with("transform/functions/") || file == "transform/BuiltInFunctions.cpp";
}

/// A document with much that is ignored.
constexpr const char* remarkedDocument = "fuzz/seeds/documents/everything-said-in-vain.pmml";

const std::set<std::string> otherTexts = {
    // What adapting did.
    " is left out: it means nothing for scoring",
    "\" reads it, and may tell texts with blanks from others",
    "its expression may give texts with blanks",
    "test cases of the document name one with them",
    "\" are taken off",
    "\" stay: ",
    "\" stay: without them another field would have the same name",
    "the blanks around name \"",
    "the blanks around the values of \"",
    "the blanks around the target in field \"",
    "modelName is empty: the document gives none",
    " is moved from LocalTransformations to the TransformationDictionary",
    " is the one that was moved from an earlier model",
    "the derived field ",
    "the derived field \"",
    "\" is listed in the schema as an input",
    "\", the schema's target",
    "fieldName is \"",
    "usageType \"target\" is read as \"predicted\"",
    // Names, versions, blanks and other characters.
    "2.1",
    "http://www.dmg.org/PMML-",
    "xmlns:",
    "scoring.nbscore",
    " tr\n",
    "T ",
    // Parts of patterns.
    "%H:%M",
    "%H:%M:%S",
    "\\.[](){}*+?|^$",
    "%I:%M:%S %p",
    "%a %b %e %H:%M:%S %Y",
    "-+ 0",
    // Documents that are not there, or are more than memory holds: there is no place in them.
    "The file \"",
    "\" cannot be read: ",
    "The document cannot be read: ",
    "The document cannot be read: the stream failed.",
    "The document takes more memory than there is.",
    "The XML library cannot start: ",
    // For a million categories.
    "Target index",
    // For callers with trees, encodings and translators of their own: no parsed document gets there.
    "A document with a root element is required.",
    "<DataDictionary is required !!",
    "The document has no <DataDictionary>.",
    "The document has no <TransformationDictionary>.",
    "The document holds no model of a kind that is known here.",
    "Element DerivedField not found in ParseDiscretize\nThe element is ",
    "Expressions nest deeper than ",
    "The encoding \"",
    "\" is not supported.",
    "\" cannot hold the text \"",
    "Variable name not found in dictionary.",
};

TEST_F(RefusalPlaces, AreKnownForEveryMessage) {
    std::string messages;
    for (const RefusedSample& sample : RefusedSamples())
        messages += ProblemOf(sample).message + "\n";
    for (const RefusedTestCases& sample : RefusedTestCaseSamples())
        messages += RefusalOf(sample).GetMessage() + "\n";
    for (const IgnoredConstruct& remark :
         SourceDocument::Read((std::filesystem::path(NBSCORE_SOURCES) / remarkedDocument).string()).FindIgnored())
        messages += remark.message + "\n" + remark.advice + "\n";
    const std::string functions = ReadWholeFile(std::filesystem::path(NBSCORE_SOURCES) / "docs/functions.md");
    std::size_t known = 0;
    for (const SourceMessage& text : FindSourceMessages(NBSCORE_SOURCES)) {
        const bool isReached = messages.find(text.text) != std::string::npos;
        if (isReached) ++known;
        const bool isOfFunction = MayDescribeFunctions(text.file) && functions.find(text.text) != std::string::npos;
        const bool isOther = otherFiles.contains(text.file) || otherTexts.contains(text.text) || isOfFunction;
        EXPECT_TRUE(isReached || isOther) << text.file << ": no document is refused with \"" << text.text << '"';
    }
    EXPECT_GT(known, 100U);
}

}  // namespace
}  // namespace nbscore::test
