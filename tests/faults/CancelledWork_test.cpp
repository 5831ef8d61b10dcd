// Work that its caller cancels, once at each of the moments at which it asks whether it is cancelled.

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <limits>
#include <ostream>
#include <string>
#include <utility>

#include "check/DocumentCheck.h"
#include "faults/FailingAllocations.h"
#include "faults/Work.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "output/OutputSink.h"
#include "support/TextSink.h"
#include "table/TableScorer.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

class CancelledWork : public testing::TestWithParam<DocumentAndRows> {
protected:
    /// Checks the document, then reads, adapts, verifies and scores with it, one case after another and on threads.
    std::string Do(const Limits& limits) const {
        const DocumentAndRows& subject = GetParam();
        TextSink sink;
        sink.text = WriteCheckAsText(CheckDocument(plugin, subject.document, true, limits, subject.rule));
        SourceDocument source = SourceDocument::Read(subject.document.string(), limits);
        source.Adapt();
        LoadedModel loaded = LoadedModel::Read(plugin, source, subject.rule);
        loaded.RequireScorable();
        VerifyModel(
            loaded.Get(), source.ReadVerification(subject.rule), [](const CellDifference&) {}, [] {});
        TableScorerOptions options;
        options.limits = limits;
        for (options.threads = 1; options.threads <= 2; ++options.threads) {
            std::ifstream rows(subject.rows, std::ios::binary);
            ScoreTable(loaded.Get(), rows, "rows", sink, options, {});
        }
        return sink.text;
    }

    /// The records of derived values that a thread has used go when it uses another one: this is always the last.
    std::int64_t CountLiveAllocationsWithoutRecords() const {
        LoadedModel::Read(plugin, std::filesystem::path(NBSCORE_FAULT_DOCUMENTS) / "derived-fields.pmml");
        return CountLiveAllocations();
    }

    /// Limits that cancel the work after this many questions.
    static Limits CancellingAfter(std::uint64_t questions, std::atomic<std::uint64_t>& asked) {
        Limits limits;
        limits.isCancelled = [questions, &asked] { return ++asked > questions; };
        return limits;
    }

    const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
};

TEST_P(CancelledWork, EndsAtOnceAndLeavesNothingBehind) {
    std::atomic<std::uint64_t> questions = 0;
    const std::string expected = Do(CancellingAfter(never, questions));
    EXPECT_GT(questions, 10U);
    RecordProperty("questions", std::to_string(questions));
    std::atomic<std::uint64_t> asked = 0;
    // After this, whatever is made once in a program's life exists.
    EXPECT_THROW(Do(CancellingAfter(0, asked)), CancelledError);
    for (std::uint64_t answered = 0; answered < questions && !HasFailure(); ++answered) {
        const std::int64_t before = CountLiveAllocationsWithoutRecords();
        asked = 0;
        EXPECT_THROW(Do(CancellingAfter(answered, asked)), CancelledError) << "question " << answered + 1;
        EXPECT_EQ(CountLiveAllocationsWithoutRecords(), before) << "question " << answered + 1;
    }
    asked = 0;
    EXPECT_EQ(Do(CancellingAfter(never, asked)), expected);
}

INSTANTIATE_TEST_SUITE_P(Documents, CancelledWork, testing::ValuesIn(AllDocuments()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace
}  // namespace nbscore::test
