// The number of threads changes nothing that a user sees: neither output nor messages nor exit status.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cases/CaseFile.h"
#include "cases/CaseTable.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"
#include "support/WholeFile.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "table/CsvScanner.h"

namespace nbscore::test {
namespace {

/// Long enough to be read in several blocks, with borders anywhere.
constexpr std::size_t bytesOfSeveralBlocks = 1'200'000;
constexpr int numRandomDocuments = 8;
constexpr int casesPerDocument = 300;

/// The table with its rows repeated.
std::string RepeatRows(std::string table) {
    if (!table.ends_with('\n')) table += '\n';
    std::size_t headerEnd = 0;
    CsvScanner scanner(',');
    while (headerEnd < table.size() && scanner.GetRowEnd() == 0)
        scanner.FindRowEnds(std::string_view(table).substr(0, ++headerEnd));
    if (headerEnd > 0 && table.compare(headerEnd - 1, 2, "\r\n") == 0) ++headerEnd;
    const std::string rows = table.substr(headerEnd);
    while (!rows.empty() && table.size() < bytesOfSeveralBlocks)
        table += rows;
    return table;
}

class Scoring {
public:
    Scoring(std::filesystem::path documentPath, const std::string& table)
        : document(std::move(documentPath)), tablePath(folder.Write("rows.csv", table)) {}

    CommandResult On(int threads, const std::vector<std::string>& options) const {
        CommandCall call;
        call.program = NBSCORE_COMMAND;
        call.arguments = {"score", document.string(), tablePath.string(), "--threads", std::to_string(threads)};
        call.arguments.insert(call.arguments.end(), options.begin(), options.end());
        return RunCommand(call);
    }

    void ExpectTheSameOnAnyNumberOfThreads(int exitStatus, const std::vector<std::string>& options = {}) const {
        const CommandResult onOne = On(1, options);
        EXPECT_EQ(onOne.exitStatus, exitStatus) << onOne.err;
        for (const int threads : {2, 8}) {
            SCOPED_TRACE(std::to_string(threads) + " threads");
            const CommandResult onMore = On(threads, options);
            EXPECT_EQ(onMore.exitStatus, onOne.exitStatus);
            EXPECT_EQ(onMore.err, onOne.err);
            EXPECT_TRUE(onMore.out == onOne.out) << "other bytes are written";
        }
    }

private:
    TemporaryFolder folder;
    std::filesystem::path document;
    std::filesystem::path tablePath;
};

class CasesOnThreads : public testing::TestWithParam<CaseFile> {};

TEST_P(CasesOnThreads, GiveTheSame_OnAnyNumberOfThreads) {
    const CaseFile& caseFile = GetParam();
    const std::string rows = ReadWholeFile(caseFile.rows);
    const int exitStatus = caseFile.expectedRefusal ? caseFile.expectedRefusal->exitStatus : 0;
    const std::vector<std::string> options = caseFile.GetOptions();
    Scoring(caseFile.document, rows).ExpectTheSameOnAnyNumberOfThreads(exitStatus, options);
    // For a refused document no table is read, and a faulty row is refused at its first occurrence.
    if (exitStatus == 0) Scoring(caseFile.document, RepeatRows(rows)).ExpectTheSameOnAnyNumberOfThreads(0, options);
}

INSTANTIATE_TEST_SUITE_P(Cases, CasesOnThreads, testing::ValuesIn(AllCaseFiles()),
                         [](const auto& parameter) { return TestNameOf(parameter.param); });

TEST(RandomDocuments, GiveTheSame_OnAnyNumberOfThreads) {
    const TemporaryFolder folder;
    Randomness random(19120417);
    for (int number = 0; number < numRandomDocuments; ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document.text);
        const auto cases = DrawEach(casesPerDocument, [&] { return MakeRandomCase(document, random); });
        const Scoring scoring(folder.Write("document.pmml", document.text),
                              RepeatRows(CsvTableText(document.inputs, cases)));
        const std::vector<std::string> options =
            number % 2 == 0 ? std::vector<std::string>{} : std::vector<std::string>{"--format", "jsonl"};
        scoring.ExpectTheSameOnAnyNumberOfThreads(0, options);
    }
}

TEST(RandomSets, GiveTheSameInEveryShape_OnAnyNumberOfThreads) {
    const TemporaryFolder folder;
    Randomness random(19120418);
    for (int number = 0; number < numRandomDocuments; ++number) {
        const RandomSet set = MakeRandomSet(random);
        SCOPED_TRACE("set " + std::to_string(number) + ":\n" + set.text);
        const auto cases = DrawEach(casesPerDocument, [&] { return MakeRandomSetCase(set, random); });
        const Scoring scoring(folder.Write("document.pmml", set.text), RepeatRows(CsvTableText(set.columns, cases)));
        const std::vector<std::vector<std::string>> shapes = {
            {}, {"--long"}, {"--best", "2"}, {"--long", "--best", "1"}, {"--format", "jsonl"}};
        const std::size_t shape = static_cast<std::size_t>(number) % shapes.size();
        scoring.ExpectTheSameOnAnyNumberOfThreads(0, shapes[shape]);
    }
}

}  // namespace
}  // namespace nbscore::test
