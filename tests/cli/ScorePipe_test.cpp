// The command between two pipes: as a filter that answers row by row, that stops when it is told to, and that ends when
// the reader has gone.

#include <csignal>
#include <functional>

#include "cli/CommandTest.h"
#include "cli/NamedPipe.h"

namespace nbscore::test {
namespace {

constexpr int rowsOfTheFirstBlock = 40'000;

/// What it is to run with: how many threads, and whether the output's name is given.
struct Way {
    int threads;
    bool isNamed;
};

class ScorePipe : public CommandTest, public testing::WithParamInterface<Way> {
protected:
    ScorePipe() : pipe(folder / "answers") {}

    CommandCall MakeScoreCall(const std::string& table) const {
        CommandCall call = MakeCall({"score", "model.pmml", table, "--threads", std::to_string(GetParam().threads)});
        call.secondsUntilKilled = 60;
        if (GetParam().isNamed) {
            call.arguments.insert(call.arguments.end(), {"-o", "answers"});
        } else {
            call.outputPath = pipe.GetPath();
        }
        return call;
    }

    /// Sends row after row, and expects the scores of each before the next one is sent.
    /// @param rowEnd is sent with a row.
    /// @param beforeRow what is sent in front of the row of this number.
    void ExpectEachRowAnswered(const std::string& rowEnd, const std::function<std::string(std::size_t)>& beforeRow) {
        const std::vector<std::string> scores = Lines(Run({"score", "model.pmml", "cases.csv"}).out);
        ASSERT_EQ(scores.size(), 3U);
        StartedCommand started(MakeScoreCall("-"));
        const std::vector<std::string> rows = Lines(fruitCases);
        started.WriteInput(rows[0] + rowEnd);
        for (std::size_t i = 0; i < 6; ++i) {
            started.WriteInput(beforeRow(i) + rows[1 + i % 2] + rowEnd);
            // The header comes with the first row's scores.
            const std::string firstLine = pipe.ReadLine();
            ASSERT_EQ(i == 0 ? pipe.ReadLine() : firstLine, scores[1 + i % 2]);
        }
        started.CloseInput();
        const CommandResult result = started.Wait();
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
    }

    /// A table of many blocks, whose scores no pipe holds.
    void WriteLongTable() const {
        std::string table = fruitCases;
        while (table.size() < 2'000'000)
            table += table.substr(table.find('\n') + 1);
        folder.Write("long.csv", table);
    }

    NamedPipe pipe;
};

TEST_P(ScorePipe, EachRowIsAnswered_BeforeTheNextOneComes) {
    ExpectEachRowAnswered("\n", [](std::size_t) { return ""; });
}

/// What writes CRLF may send the two bytes apart.
TEST_P(ScorePipe, EachRowIsAnsweredAtItsCarriageReturn_AndALaterLineFeedIsNoRow) {
    ExpectEachRowAnswered("\r", [](std::size_t row) { return row % 3 == 0 ? "\n" : ""; });
}

TEST_P(ScorePipe, TheRunEndsAtOnce_WhenToldToWhileThePipeIsFull) {
    WriteLongTable();
    for (const int signal : {SIGINT, SIGTERM}) {
        StartedCommand started(MakeScoreCall("long.csv"));
        // The first block is scored by the thread that reads; behind it others may write.
        for (int i = 0; i < rowsOfTheFirstBlock && !HasFailure(); ++i)
            pipe.ReadLine();
        pipe.WaitUntilFull();
        started.SendSignal(signal);
        const CommandResult result = started.Wait();
        EXPECT_EQ(result.exitStatus, 128 + signal);
        EXPECT_EQ(result.err, "interrupted\n");
        while (pipe.TakeSome()) {
        }
    }
}

TEST_P(ScorePipe, TheRunFails_WhenTheReaderIsGone) {
    WriteLongTable();
    StartedCommand started(MakeScoreCall("long.csv"));
    pipe.ReadLine();
    pipe.Close();
    const CommandResult result = started.Wait();
    EXPECT_EQ(result.exitStatus, 4);
    const std::string output = GetParam().isNamed ? "answers" : "to standard output";
    EXPECT_EQ(result.err, "error: cannot write " + output + ": Broken pipe\n");
}

INSTANTIATE_TEST_SUITE_P(Ways, ScorePipe,
                         testing::Values(Way{1, false}, Way{2, false}, Way{4, false}, Way{1, true}, Way{2, true}),
                         [](const auto& tested) {
                             return "On" + std::to_string(tested.param.threads) +
                                    (tested.param.isNamed ? "IntoAFile" : "IntoStandardOutput");
                         });

}  // namespace
}  // namespace nbscore::test
