// Tables larger than memory, and more threads than the system gives.

#include "hostile/HostileTest.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::test {
namespace {

constexpr std::uint64_t megabyte = std::uint64_t{1} << 20;

class LongTable : public HostileTest {
protected:
    /// Scores a table that is made while it is read.
    CommandResult ScoreInLittleMemory(int threads, std::size_t tableBytes) const {
        CommandCall call = MakeCall({"score", "model.pmml", "-", "--threads", std::to_string(threads)});
        call.outputPath = "/dev/null";
        if (memoryIsLimited) call.memoryLimit = 128 * megabyte;
        StartedCommand started(call);
        started.WriteInput("colour,weight\n");
        std::string rows;
        while (rows.size() < 60'000)
            rows += "red,200\ngreen,100\n,\n\"green\",100.5\n";
        for (std::size_t written = 0; written < tableBytes; written += rows.size())
            started.WriteInput(rows);
        started.CloseInput();
        return started.Wait();
    }
};

TEST_F(LongTable, IsScoredInLessMemoryThanItHas) {
    const std::uint64_t tableBytes = memoryIsLimited ? 160 * megabyte : megabyte;
    for (const int threads : {1, 2}) {
        const CommandResult result = ScoreInLittleMemory(threads, tableBytes);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
    }
}

TEST_F(LongTable, EndsCleanly_WhenTheSystemGivesFewerThreadsThanRequested) {
    std::string table = fruitCases;
    while (table.size() < 2 * megabyte)
        table += table.substr(table.find('\n') + 1);
    folder.Write("cases.csv", table);
    // Each thread takes addresses of its own: there are not enough for that many, and maybe not for their buffers.
    const CommandResult result = RunLimited({"score", "model.pmml", "cases.csv", "--threads", "200"});
    if (result.exitStatus != 0) {
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.err, "error: out of memory\n");
        return;
    }
    EXPECT_TRUE(result.out == Run({"score", "model.pmml", "cases.csv", "--threads", "1"}).out);
}

using WideTable = HostileTest;

/// A document with very many inputs, each with a single text.
ModelDocument MakeWideDocument(std::size_t inputs) {
    ModelDocument document;
    for (std::size_t i = 0; i < inputs; ++i)
        document.inputs.push_back({"t" + std::to_string(i), FieldType::Texts, 1, [](std::size_t) { return "a"; }});
    document.targetCategories = {"no", "yes"};
    document.targetCountOf = [](std::size_t k) { return k + 3; };
    document.countOf = [](std::size_t, std::size_t, std::size_t, std::size_t k) { return k + 3; };
    return document;
}

TEST_F(WideTable, TakesLittleMemoryOnEachThread) {
    constexpr std::size_t inputs = 8000;
    WriteDocument(MakeWideDocument(inputs), folder / "wide.pmml");
    std::string header = "t0";
    std::string row = "a";
    for (std::size_t i = 1; i < inputs; ++i) {
        header += ",t" + std::to_string(i);
        row += i % 3 == 0 ? "," : ",a";
    }
    std::string table = header + "\n";
    for (int i = 0; i < 100; ++i)
        table += row + "\n";
    folder.Write("wide.csv", table);
    CommandCall call = MakeCall({"score", "wide.pmml", "wide.csv", "--only-scores", "--quiet", "--threads", "2"});
    if (memoryIsLimited) call.memoryLimit = 450 * megabyte;
    const CommandResult result = StartedCommand(call).Wait();
    EXPECT_EQ(result.exitStatus, 0) << result.err;
}

}  // namespace
}  // namespace nbscore::test
