// Memory runs out at every single allocation of everything that a host does with a document.

#include <gtest/gtest.h>

#include <exception>
#include <iostream>
#include <new>
#include <ostream>

#include "check/DocumentCheck.h"
#include "faults/FailingAllocations.h"
#include "faults/Work.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "host/PluginLibrary.h"
#include "output/HostError.h"

namespace nbscore::test {
namespace {

struct Subject {
    std::string name;
    WorkMaker make;
    DocumentAndRows about;
    Shortage shortage;
    /// Only every so many-th allocation fails: 1 tries all.
    std::uint64_t stride;
};

void PrintTo(const Subject& subject, std::ostream* out) {
    *out << subject.name;
}

enum class Outcome { Answered, Refused, OutOfMemory, Unexpected };

struct Attempt {
    Outcome outcome = Outcome::Unexpected;
    std::string text;
    bool hasFailedAllocation = false;
};

/// The message for a document when memory runs out: a check reports it, all else throws it.
bool TellsOfMemory(const std::string& text) {
    return text.find("error 12: The document takes more memory than there is.\n") != std::string::npos;
}

/// Does the work while an allocation fails. What is thrown may say that memory ran out, or that reading or writing
/// failed; never that anything else is wrong with the document.
Attempt AttemptWork(Work& work, std::uint64_t failing, Shortage shortage) {
    Attempt attempt;
    LetAllocationFail(failing, shortage);
    try {
        std::string answer = work.Do();
        attempt.hasFailedAllocation = EndShortage();
        attempt.outcome = TellsOfMemory(answer) ? Outcome::Refused : Outcome::Answered;
        attempt.text = std::move(answer);
    } catch (const std::bad_alloc&) {
        attempt.hasFailedAllocation = EndShortage();
        attempt.outcome = Outcome::OutOfMemory;
    } catch (const InputOutputError& error) {
        attempt.hasFailedAllocation = EndShortage();
        attempt.outcome = Outcome::Refused;
        attempt.text = error.what();
    } catch (const VeskException& refusal) {
        attempt.hasFailedAllocation = EndShortage();
        attempt.text = "error " + std::to_string(refusal.GetCode()) + ": " + refusal.GetMessage() + "\n";
        const bool isOfFile = refusal.GetCode() == VeskException::UnreadableSource;
        if (isOfFile || TellsOfMemory(attempt.text)) attempt.outcome = Outcome::Refused;
    } catch (const std::exception& error) {
        attempt.hasFailedAllocation = EndShortage();
        attempt.text = error.what();
    }
    return attempt;
}

class AllocationFailure : public testing::TestWithParam<Subject> {
protected:
    /// One attempt with a failure, then one without. Counts what they leave behind.
    std::int64_t CountLeftBehind(std::uint64_t failing, bool& hasFailedAllocation) {
        const std::int64_t before = CountLiveAllocations();
        {
            const std::unique_ptr<Work> work = GetParam().make(GetParam().about);
            const Attempt attempt = AttemptWork(*work, failing, GetParam().shortage);
            hasFailedAllocation = attempt.hasFailedAllocation;
            EXPECT_NE(attempt.outcome, Outcome::Unexpected) << attempt.text;
            if (attempt.outcome == Outcome::Answered) {
                EXPECT_EQ(attempt.text, expected);
            }
            EXPECT_EQ(work->Do(), expected);
        }
        return CountLiveAllocations() - before;
    }

    std::string expected;
};

TEST_P(AllocationFailure, IsReportedAndLeavesNothingBehind) {
    // Twice, so that whatever is made once in a program's life exists.
    for (int i = 0; i < 2; ++i)
        expected = GetParam().make(GetParam().about)->Do();
    std::uint64_t failing = 1;
    for (bool hasFailedAllocation = true; hasFailedAllocation; failing += GetParam().stride) {
        std::int64_t left = CountLeftBehind(failing, hasFailedAllocation);
        // Some things are made once, too, but only when something fails.
        if (left != 0) left = CountLeftBehind(failing, hasFailedAllocation);
        EXPECT_EQ(left, 0) << "allocation " << failing;
        if (HasFailure()) break;
    }
    EXPECT_GT(failing, 10U);
    RecordProperty("allocations", static_cast<int>(failing));
}

/// A check reports that memory ran out for its own document, so that the next ones can be checked.
TEST(AllocationFailureOfACheck, IsAnErrorOfTheDocument_WherePossible) {
    const std::filesystem::path document = std::filesystem::path(NBSCORE_EXAMPLES) / "iris/iris.pmml";
    const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    const std::string sound = WriteCheckAsText(CheckDocument(plugin, document, false));
    std::uint64_t failing = 1;
    for (bool hasFailedAllocation = true; hasFailedAllocation && !HasFailure(); ++failing) {
        LetAllocationFail(failing, Shortage::OfOne);
        const DocumentCheck check = CheckDocument(plugin, document, false);
        hasFailedAllocation = EndShortage();
        const std::string report = WriteCheckAsText(check);
        if (report == sound) continue;
        EXPECT_TRUE(TellsOfMemory(report)) << "allocation " << failing << ": " << report;
        EXPECT_EQ(check.problems.size(), 1U) << "allocation " << failing;
        EXPECT_FALSE(check.IsSound());
    }
    EXPECT_GT(failing, 100U);
}

/// The memory for the values of derived fields is ready before the first case.
TEST(DerivedValues, HaveTheirMemory_BeforeTheFirstCase) {
    const std::filesystem::path document = std::filesystem::path(NBSCORE_FAULT_DOCUMENTS) / "derived-fields.pmml";
    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN), document);
    TransformationDictionary* const derived = model.Get().GetTransformationDictionary();
    ASSERT_NE(derived, nullptr);
    const std::int64_t before = CountLiveAllocations();
    ASSERT_NE(derived->GetValuesForDeriedVars(nullptr, model.Get().GetDictionary()), nullptr);
    EXPECT_EQ(CountLiveAllocations(), before);
}

/// Every allocation fails once. Where memory is watched this takes so long that some must do: the other builds try all.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr std::uint64_t fromOneToNext = 4;
#else
constexpr std::uint64_t fromOneToNext = 1;
#endif
#else
constexpr std::uint64_t fromOneToNext = 1;
#endif

std::vector<Subject> AllSubjects() {
    const std::vector<std::pair<std::string, WorkMaker>> works = {{"Reading", MakeReading},
                                                                  {"Verifying", MakeVerifying},
                                                                  {"Checking", MakeChecking},
                                                                  {"ScoringWithOneResult", MakeScoringWithOneResult},
                                                                  {"ScoringWithNewResults", MakeScoringWithNewResults},
                                                                  {"ScoringTables", MakeScoringTables},
                                                                  {"CallingC", MakeCallingC}};
    std::vector<Subject> subjects;
    for (const DocumentAndRows& about : AllDocuments()) {
        for (const auto& [name, make] : works) {
            if (name == "Reading" && about.name == "NewerProducer") continue;  // must be adapted
            subjects.push_back({name + about.name + "OneFails", make, about, Shortage::OfOne, fromOneToNext});
            subjects.push_back({name + about.name + "AllFail", make, about, Shortage::OfAllThatFollow, 5});
        }
    }
    return subjects;
}

INSTANTIATE_TEST_SUITE_P(Everywhere, AllocationFailure, testing::ValuesIn(AllSubjects()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace nbscore::test
