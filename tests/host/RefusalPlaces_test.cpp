// Every refusal says where the element at fault begins and which it is; and every message that a document can be
// refused with has a document that is.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "check/DocumentCheck.h"
#include "host/ElementOffset.h"
#include "host/LoadedModel.h"
#include "host/RefusedSamples.h"
#include "host/SourceDocument.h"
#include "pmml/RefusalTable.h"
#include "support/TemporaryFolder.h"
#include "verify/ModelVerifier.h"

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
    DocumentCheck CheckOf(const RefusedSample& sample) const {
        return CheckDocument(plugin, folder.Write("document.pmml", sample.document), sample.adapt, sample.limits,
                             sample.rule);
    }

    DocumentProblem ProblemOf(const RefusedSample& sample) const {
        const DocumentCheck check = CheckOf(sample);
        EXPECT_FALSE(check.problems.empty()) << sample.place << ' ' << sample.document;
        return check.problems.empty() ? DocumentProblem() : check.problems.front();
    }

    VeskException RefusalOf(const RefusedTestCases& sample) const {
        try {
            const SourceDocument document =
                SourceDocument::Read(folder.Write("document.pmml", sample.document).string());
            const std::vector<VerificationSuite> suites = document.ReadVerification();
            LoadedModel loaded = LoadedModel::Read(plugin, document);
            VerifyModel(
                loaded.Get(), suites, [](const CellDifference&) {}, [] {});
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

/// Ids that no parsed document is refused with.
const std::set<Refusal> otherRefusals = {
    // Of files and machines that fail.
    Refusal::FileUnreadable, Refusal::StreamBroken, Refusal::XmlLibraryCannotStart, Refusal::XmlLibraryFailed,
    Refusal::OutOfMemory,
    // For a million categories.
    Refusal::TargetIndexTooHigh,
    // For callers with trees, encodings and translators of their own.
    Refusal::EncodingUnknown, Refusal::EncodingLacksText, Refusal::ChildMissing, Refusal::RootMissing,
    Refusal::ModelOfNoKnownKind, Refusal::NoDataDictionaryGiven, Refusal::NoDataDictionaryToMark,
    Refusal::NoTransformationDictionaryGiven, Refusal::InputWithoutVariable, Refusal::ExpressionsTooDeep,
    // Of adding to a document, which is not reading it.
    Refusal::NotWrittenByCounting, Refusal::CountsDiffer};

/// Whether a message is of an entry's form, with any text in its gaps.
bool Fits(std::string_view message, std::string_view form) {
    for (std::size_t gap = form.find("{}"); gap != std::string_view::npos; gap = form.find("{}")) {
        const std::size_t found = message.find(form.substr(0, gap));
        if (found == std::string_view::npos) return false;
        message.remove_prefix(found + gap);
        form.remove_prefix(gap + 2);
    }
    return message.ends_with(form);
}

/// A notice is shown on one line.
std::string FormOf(const RefusalEntry& entry) {
    std::string form(entry.message);
    if (const std::size_t lineEnd = form.find('\n'); lineEnd != std::string::npos) form.replace(lineEnd, 1, ". ");
    return form;
}

TEST_F(RefusalPlaces, AreKnownForEveryRefusalOfTheTable) {
    std::set<Refusal> reached = otherRefusals;
    // Behind the advice, a word about warnings may stand.
    const auto note = [&reached](int code, const std::string& message, const std::string& advice) {
        bool isListed = false;
        for (const RefusalEntry& entry : GetRefusals()) {
            if (entry.code != code || !advice.starts_with(entry.advice) || !Fits(message, FormOf(entry))) continue;
            reached.insert(entry.id);
            isListed = true;
        }
        return isListed;
    };
    for (const RefusedSample& sample : RefusedSamples()) {
        for (const DocumentProblem& problem : CheckOf(sample).problems) {
            const bool isListed = note(problem.code, problem.message, problem.advice);
            // The advice of warnings, of models that cannot be scored, and to adapt the document, is no refusal's.
            const bool isOther =
                problem.code == 0 || sample.place.empty() || problem.advice.starts_with("Read it with");
            EXPECT_TRUE(isListed || isOther) << problem.message;
        }
    }
    for (const RefusedTestCases& sample : RefusedTestCaseSamples()) {
        const VeskException refusal = RefusalOf(sample);
        EXPECT_TRUE(note(refusal.GetCode(), refusal.GetMessage(), refusal.GetAdvice())) << refusal.GetMessage();
    }
    for (const RefusalEntry& entry : GetRefusals())
        EXPECT_TRUE(reached.contains(entry.id)) << "no document is refused with \"" << entry.message << '"';
}

}  // namespace
}  // namespace nbscore::test
