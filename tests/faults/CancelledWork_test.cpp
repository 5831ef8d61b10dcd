// Work that its caller ends, at every single question whether it is still wanted.

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
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "output/OutputSink.h"
#include "table/TableScorer.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

struct Subject {
    std::string name;
    std::filesystem::path document;
    std::filesystem::path rows;
};

void PrintTo(const Subject& subject, std::ostream* out) {
    *out << subject.name;
}

class TextSink : public OutputSink {
public:
    void Write(std::string_view bytes) override { text += bytes; }
    void Commit() override {}

    std::string text;
};

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

class CancelledWork : public testing::TestWithParam<Subject> {
protected:
    /// Checks the document, then reads, adapts, verifies and scores with it, one case after another and on threads.
    std::string Do(const Limits& limits) const {
        const Subject& subject = GetParam();
        TextSink sink;
        sink.text = WriteCheckAsText(CheckDocument(plugin, subject.document, true, limits));
        SourceDocument source = SourceDocument::Read(subject.document.string(), limits);
        source.Adapt();
        LoadedModel loaded = LoadedModel::Read(plugin, source);
        loaded.RequireScorable();
        VerifyModel(
            loaded.Get(), source.ReadVerification(), [](const CellDifference&) {}, [] {});
        TableScorerOptions options;
        options.limits = limits;
        for (options.threads = 1; options.threads <= 2; ++options.threads) {
            std::ifstream rows(subject.rows, std::ios::binary);
            ScoreTable(loaded.Get(), rows, "rows", sink, options, {});
        }
        return sink.text;
    }

    /// The first so many questions are answered with no.
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
    // What is made once in a program's life is there then.
    EXPECT_THROW(Do(CancellingAfter(0, asked)), CancelledError);
    for (std::uint64_t answered = 0; answered < questions && !HasFailure(); ++answered) {
        const std::int64_t before = CountLiveAllocations();
        asked = 0;
        EXPECT_THROW(Do(CancellingAfter(answered, asked)), CancelledError) << "question " << answered + 1;
        EXPECT_EQ(CountLiveAllocations(), before) << "question " << answered + 1;
    }
    asked = 0;
    EXPECT_EQ(Do(CancellingAfter(never, asked)), expected);
}

const std::filesystem::path examples = NBSCORE_EXAMPLES;
const std::filesystem::path documents = NBSCORE_FAULT_DOCUMENTS;

INSTANTIATE_TEST_SUITE_P(
    Documents, CancelledWork,
    testing::Values(Subject{"Titanic", examples / "titanic/titanic.pmml", examples / "titanic/people.csv"},
                    Subject{"Offers", examples / "offers/offers.pmml", examples / "offers/customers.csv"},
                    Subject{"DerivedFields", documents / "derived-fields.pmml", documents / "derived-fields.csv"},
                    Subject{"NewerProducer", documents / "newer-producer.pmml", documents / "newer-producer.csv"}),
    [](const auto& instance) { return instance.param.name; });

}  // namespace
}  // namespace nbscore::test
