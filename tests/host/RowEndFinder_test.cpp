#include "host/RowEndFinder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <string>

#include "host/CellSplitter.h"

namespace nbscore::test {
namespace {

/// Where the last whole row ends, found by taking row after row apart; nothing when a row has a fault.
std::optional<std::size_t> EndOfRowsOneByOne(std::string_view bytes, char delimiter) {
    CellSplitter splitter(delimiter);
    std::size_t end = 0;
    while (true) {
        splitter.StartRow();
        const CellSplitter::Outcome outcome = splitter.Continue(bytes.substr(end), false);
        if (outcome == CellSplitter::Outcome::NeedsMore) return end;
        if (outcome != CellSplitter::Outcome::RowEnds) return std::nullopt;
        end += splitter.GetPosition();
    }
}

std::size_t FindRowEnd(std::string_view bytes, char delimiter = ',') {
    RowEndFinder finder(delimiter);
    finder.Start();
    finder.Continue(bytes);
    return finder.GetRowEnd();
}

bool FindFault(std::string_view bytes) {
    RowEndFinder finder(',');
    finder.Start();
    finder.Continue(bytes);
    return finder.HasFault();
}

TEST(RowEndFinder, FindsTheLastRowThatIsWhole) {
    EXPECT_EQ(FindRowEnd(""), 0U);
    EXPECT_EQ(FindRowEnd("a,b"), 0U);
    EXPECT_EQ(FindRowEnd("a\nb"), 2U);
    EXPECT_EQ(FindRowEnd("a\r\nb\r\nc"), 6U);
    EXPECT_EQ(FindRowEnd("a\rb\rc"), 4U);
    EXPECT_EQ(FindRowEnd("a\r\"b\rc\"\r\"d\r"), 8U);
    EXPECT_EQ(FindRowEnd("a\n\"b\nc\nd"), 2U);
    EXPECT_EQ(FindRowEnd("a\n\"b\nc\"\n\"d\n"), 8U);
    EXPECT_EQ(FindRowEnd("a\n\"b\n\"\"\nc\nd"), 2U);
}

TEST(RowEndFinder, ARowIsWholeWithItsCarriageReturn_AndHasTheLineFeedThatFollows) {
    RowEndFinder finder(',');
    finder.Start();
    finder.Continue("a\r");
    EXPECT_EQ(finder.GetRowEnd(), 2U);
    finder.Continue("a\r\n");
    EXPECT_EQ(finder.GetRowEnd(), 3U);
}

TEST(RowEndFinder, WaitsForTheNextByte_WhenAQuoteMayCloseTheCell) {
    RowEndFinder finder(',');
    finder.Start();
    finder.Continue("\"a\"");
    EXPECT_EQ(finder.GetRowEnd(), 0U);
    finder.Continue("\"a\"\"\n");
    EXPECT_EQ(finder.GetRowEnd(), 0U);
    finder.Continue("\"a\"\"\n\"\n");
    EXPECT_EQ(finder.GetRowEnd(), 7U);
}

TEST(RowEndFinder, TellsAQuoteThatStandsWhereNoneMay) {
    EXPECT_TRUE(FindFault("a\"\n"));
    EXPECT_TRUE(FindFault("a\n;\"b\"\n"));
    EXPECT_TRUE(FindFault("a\rb\"\r"));
    EXPECT_FALSE(FindFault("a\r\"b\"\n"));
    EXPECT_FALSE(FindFault("\"a\",\"b\"\n\"c\""));
    EXPECT_EQ(FindRowEnd("a\nb\"\nc\n"), 2U) << "what stands behind the fault is not looked at";
}

TEST(RowEndFinder, ForgetsTheTextBefore_WhenItStartsAgain) {
    RowEndFinder finder(',');
    finder.Start();
    finder.Continue("a\nb\"");
    finder.Start();
    EXPECT_FALSE(finder.HasFault());
    EXPECT_EQ(finder.GetRowEnd(), 0U);
    finder.Continue("x\n\"");
    EXPECT_EQ(finder.GetRowEnd(), 2U);
}

RC_GTEST_PROP(RowEndFinder, FindsWhatTakingRowsApartFinds_WhereverThePiecesEnd, ()) {
    const char delimiter = *rc::gen::element(',', ';');
    const auto text =
        *rc::gen::scale(0.5, rc::gen::container<std::string>(rc::gen::element('"', '"', ',', ';', '\n', '\r', 'a')));
    RowEndFinder finder(delimiter);
    finder.Start();
    for (std::size_t size = 0; size <= text.size();) {
        const std::string_view bytes = std::string_view(text).substr(0, size);
        finder.Continue(bytes);
        const std::optional<std::size_t> expected = EndOfRowsOneByOne(bytes, delimiter);
        // Behind a fault nothing is promised but that whoever reads the rows meets it.
        if (!expected) return;
        RC_ASSERT(!finder.HasFault());
        RC_ASSERT(finder.GetRowEnd() == *expected);
        if (size == text.size()) return;
        size += *rc::gen::inRange<std::size_t>(1, text.size() - size + 1);
    }
}

}  // namespace
}  // namespace nbscore::test
