// Long tables with faults, and cells whose line breaks stand anywhere, on several numbers of threads.

#include <map>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

class ScoreThreads : public CommandTest {
protected:
    CommandResult ScoreOn(int threads, const std::string& table) const {
        folder.Write("cases.csv", table);
        return Run({"score", "model.pmml", "cases.csv", "--threads", std::to_string(threads)});
    }

    void ExpectOneFaultOnAnyNumberOfThreads(const std::string& table, const std::string& fault) const {
        const CommandResult onOne = ScoreOn(1, table);
        EXPECT_EQ(onOne.exitStatus, 1);
        EXPECT_EQ(onOne.err, "error: cases.csv:" + fault + "\n");
        for (const int threads : {2, 8}) {
            const CommandResult onMore = ScoreOn(threads, table);
            EXPECT_EQ(onMore.exitStatus, 1) << threads;
            EXPECT_EQ(onMore.err, onOne.err) << threads;
            EXPECT_TRUE(onMore.out == onOne.out) << threads;
        }
    }
};

constexpr std::size_t numLines = 150'000;

/// A table of several blocks, some of whose lines are others.
std::string TableWith(const std::map<std::size_t, std::string>& otherLines) {
    std::string table = "colour,weight\n";
    for (std::size_t line = 2; line <= numLines; ++line) {
        const auto other = otherLines.find(line);
        table += other == otherLines.end() ? "red,200" : other->second;
        table += '\n';
    }
    return table;
}

TEST_F(ScoreThreads, TheFirstFaultOfTheTableIsTold_WhereverItStands) {
    for (const std::size_t line : {std::size_t{2}, std::size_t{3}, numLines / 2, numLines}) {
        SCOPED_TRACE(line);
        ExpectOneFaultOnAnyNumberOfThreads(TableWith({{line, "red,heavy"}}),
                                           std::to_string(line) + ": column \"weight\": \"heavy\" is no number");
    }
    ExpectOneFaultOnAnyNumberOfThreads(TableWith({{70'000, "red"}, {70'001, "red,heavy"}, {140'000, "\"red\"x,1"}}),
                                       "70000: the row has 1 cell, the header has 2");
    ExpectOneFaultOnAnyNumberOfThreads(TableWith({{80'000, "re\"d,1"}, {120'000, "red,heavy"}}),
                                       "80000: a quote stands inside a cell that does not begin with one");
    ExpectOneFaultOnAnyNumberOfThreads(TableWith({{90'000, "\xFF,1"}, {90'001, "red"}}),
                                       "90000: the text is not valid UTF-8");
    ExpectOneFaultOnAnyNumberOfThreads(TableWith({{100'000, "\"red,1"}}),
                                       "100000: the quote that opens here is never closed");
}

TEST_F(ScoreThreads, LinesAreCounted_WhenCellsHoldLineBreaks) {
    ExpectOneFaultOnAnyNumberOfThreads(TableWith({{10, "\"\n\n\",1"}, {50'000, "\"\r\n\",1"}, {100'000, "red,heavy"}}),
                                       "100003: column \"weight\": \"heavy\" is no number");
}

/// Rows whose first cell is quoted and holds line breaks and quotes, longer ones by and by.
std::string TableOfQuotedCells(const std::string& lineEnd) {
    std::string table = "note,colour,weight" + lineEnd;
    for (std::size_t row = 0; table.size() < 1'500'000; ++row) {
        table += '"' + std::string(row % 50, 'x') + "\"\"" + lineEnd + std::to_string(row) + "\",red,200" + lineEnd;
    }
    return table;
}

TEST_F(ScoreThreads, QuotedCellsStayWhole_WhereverBlocksEnd) {
    for (const std::string lineEnd : {"\n", "\r\n"}) {
        const std::string table = TableOfQuotedCells(lineEnd);
        const CommandResult onOne = ScoreOn(1, table);
        EXPECT_EQ(onOne.exitStatus, 0) << onOne.err;
        std::size_t begin = onOne.out.find('\n') + 1;
        for (std::size_t row = 0; begin < onOne.out.size(); ++row) {
            const std::string cells =
                '"' + std::string(row % 50, 'x') + "\"\"" + lineEnd + std::to_string(row) + "\",red,200,";
            ASSERT_EQ(onOne.out.compare(begin, cells.size(), cells), 0) << row;
            begin = onOne.out.find('\n', begin + cells.size()) + 1;
        }
        for (const int threads : {2, 8})
            EXPECT_TRUE(ScoreOn(threads, table).out == onOne.out) << threads;
    }
}

TEST_F(ScoreThreads, TheirNumberIsRefused_WhenItIsNone) {
    for (const std::string number : {"0", "-1", "1.5", "many", "", "1025"}) {
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "--threads", number});
        EXPECT_EQ(result.exitStatus, 2) << number;
        EXPECT_THAT(result.err, HasSubstr("'" + number + "' is no whole number from 1 to 1024")) << number;
    }
}

}  // namespace
}  // namespace nbscore::test
