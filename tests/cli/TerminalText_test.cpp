#include "cli/system/TerminalText.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/TestConsole.h"

namespace nbscore::test {
namespace {

std::string Show(std::string_view text) {
    TerminalText terminal;
    std::string shown = terminal.Take(text);
    return shown + terminal.TakeRest();
}

TEST(TerminalText, KeepsTextAndTheLayoutOfLines) {
    const std::string text = "Ma\u00DF\t\u00A0 \U0001F600\n\"a\",\\x1b?\r\n";
    EXPECT_EQ(Show(text), text);
    EXPECT_EQ(Show(""), "");
}

TEST(TerminalText, EscapesWhatATerminalObeys) {
    EXPECT_EQ(Show("\x1b[2J\x07\b\f\x7f"), "\\x1b[2J\\x07\\x08\\x0c\\x7f");
    EXPECT_EQ(Show(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(Show("\u009B2J"), "\\xc2\\x9b2J");
}

TEST(TerminalText, EscapesWhatTurnsTextAroundOrEndsALine) {
    EXPECT_EQ(Show("a\u202Eb\u2066\u2028"), "a\\xe2\\x80\\xaeb\\xe2\\x81\\xa6\\xe2\\x80\\xa8");
}

TEST(TerminalText, EscapesACarriageReturn_WhenNoLineEndsThere) {
    EXPECT_EQ(Show("sound\rfault\r\r\n\r"), "sound\\x0dfault\\x0d\r\n\\x0d");
}

TEST(TerminalText, EscapesBytes_WhenTheyAreNoCharacters) {
    EXPECT_EQ(Show("a\x9b\x32J\xff\xc0\xaf"), "a\\x9b2J\\xff\\xc0\\xaf");
    EXPECT_EQ(Show("\xe2\x80"), "\\xe2\\x80");
    EXPECT_EQ(Show("\xe2\x80\xe2\x80\xae"), "\\xe2\\x80\\xe2\\x80\\xae");
}

TEST(TerminalText, IsTheSame_HoweverItIsCut) {
    const std::string text = "a\x1b[1m\r\n\u009B\r\u202E\u00E4\U0001F600\xe2\x80 \xf0\x9f\n";
    for (std::size_t first = 0; first <= text.size(); ++first) {
        for (std::size_t second = first; second <= text.size(); ++second) {
            TerminalText terminal;
            std::string shown = terminal.Take(text.substr(0, first));
            shown += terminal.Take(text.substr(first, second - first));
            shown += terminal.Take(text.substr(second));
            shown += terminal.TakeRest();
            ASSERT_EQ(shown, Show(text)) << first << ' ' << second;
        }
    }
}

TEST(TerminalText, IsShownAsSoonAsItsCharacterIsWhole) {
    TerminalText terminal;
    EXPECT_EQ(terminal.Take("a\xf0\x9f"), "a");
    EXPECT_EQ(terminal.Take("\x98"), "");
    EXPECT_EQ(terminal.Take("\x80\r"), "\U0001F600");
    EXPECT_EQ(terminal.Take("\n"), "\r\n");
}

TEST(TerminalSink, HandsOnText) {
    TextSink sink;
    TerminalSink terminal(sink);
    terminal.Write("a\x1b");
    terminal.Flush();
    EXPECT_EQ(sink.text, "a\\x1b");
    EXPECT_EQ(sink.commits, 0);
    terminal.Write("b\r");
    terminal.Commit();
    EXPECT_EQ(sink.text, "a\\x1bb\\x0d");
    EXPECT_EQ(sink.commits, 1);
}

TEST(TerminalMessages, AreText_WhileTheyLive) {
    std::ostringstream stream;
    {
        TerminalMessages messages(stream);
        stream << "a\x1b" << 12 << '\x07' << std::endl;
        messages.GetTerminal() << "\rover";
        stream << "\xc3";
    }
    stream << "\x1b";
    EXPECT_EQ(stream.str(), "a\\x1b12\\x07\n\rover\\xc3\x1b");
}

}  // namespace
}  // namespace nbscore::test
