// What the built command shows on a terminal of documents and tables that hold characters which a terminal obeys.

#include <termios.h>

#include <array>
#include <thread>

#include "cli/CommandTest.h"
#include "cli/PseudoTerminal.h"

namespace nbscore::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// A terminal that notes what it shows, as it was written.
class NotingTerminal {
public:
    NotingTerminal() : line(open(terminal.GetPath().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        termios settings = {};
        EXPECT_EQ(tcgetattr(line, &settings), 0);
        cfmakeraw(&settings);
        EXPECT_EQ(tcsetattr(line, TCSANOW, &settings), 0);
        reader = std::thread([this] { Read(); });
    }
    ~NotingTerminal() {
        if (reader.joinable()) TakeShown();
    }
    NotingTerminal(const NotingTerminal&) = delete;
    NotingTerminal& operator=(const NotingTerminal&) = delete;

    const std::string& GetPath() const { return terminal.GetPath(); }
    /// When no program has it open any more.
    std::string TakeShown() {
        close(line);
        reader.join();
        return shown;
    }

private:
    void Read() {
        std::array<char, 4096> piece;
        // The last one who closes a terminal ends this, with an error.
        for (ssize_t count = 0; (count = read(terminal.GetDescriptor(), piece.data(), piece.size())) > 0;)
            shown.append(piece.data(), static_cast<std::size_t>(count));
    }

    PseudoTerminal terminal;
    int line;
    std::string shown;
    std::thread reader;
};

/// Clears the screen in two ways, rings, goes back to the beginning of the line, and turns the rest around.
const std::string commands = "\x1b[2J\u009B2J\x07\r\u202E";
const std::string commandsInXml = "&#x1b;[2J&#x9b;2J&#x7;&#xd;&#x202e;";

class TerminalOutput : public CommandTest {
protected:
    TerminalOutput() {
        std::string document = fruitDocument;
        ReplaceAll(document, "version=\"1.0\"", "version=\"1.1\"");
        ReplaceAll(document, "\"red\"", "\"red" + commandsInXml + "\"");
        folder.Write("hostile.pmml", document);
        folder.Write("hostile.csv", "colour,size,weight,note\ngreen,small,3.5,\"" + commands + "\"\n");
    }

    static void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
        ASSERT_THAT(text, HasSubstr(from));
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
            text.replace(at, from.size(), to);
    }

    CommandResult RunShell(const std::string& script) const {
        CommandCall call = MakeCall({"-c", "nbscore() { '" NBSCORE_COMMAND "' \"$@\"; }; " + script});
        call.program = "/bin/sh";
        return RunCommand(call);
    }

    /// What a terminal shows of what a shell does, to which it is known as TERMINAL.
    std::string Show(std::string script) const {
        NotingTerminal terminal;
        ReplaceAll(script, "TERMINAL", terminal.GetPath());
        RunShell(script);
        return terminal.TakeShown();
    }

    static void ExpectPlain(const std::string& shown) {
        EXPECT_NE(shown, "");
        for (const char* const raw : {"\x1b", "\u009B", "\x07", "\r", "\u202E"})
            EXPECT_THAT(shown, Not(HasSubstr(raw)));
    }
};

}  // namespace

TEST_F(TerminalOutput, HasEscapes_WhenADocumentIsDisplayed) {
    const std::string shown = Show("nbscore display hostile.pmml >TERMINAL");
    ExpectPlain(shown);
    EXPECT_THAT(shown, HasSubstr("red\\x1b[2J\\xc2\\x9b2J\\x07\\x0d\\xe2\\x80\\xae"));
}

TEST_F(TerminalOutput, HasEscapes_WhateverTheCommandWritesThere) {
    for (const char* const script :
         {"nbscore score hostile.pmml hostile.csv >TERMINAL",
          "nbscore score hostile.pmml hostile.csv --format jsonl >TERMINAL", "nbscore check hostile.pmml >TERMINAL",
          "nbscore check hostile.pmml --format json >TERMINAL", "nbscore explain hostile.pmml hostile.csv >TERMINAL",
          "nbscore explain hostile.pmml hostile.csv --format csv >TERMINAL",
          "nbscore explain hostile.pmml hostile.csv --format jsonl >TERMINAL",
          "nbscore verify \"$(printf 'a\\033[2Jb')\" >TERMINAL 2>&1",
          "nbscore check \"$(printf 'a\\033[2Jb')\" >TERMINAL 2>&1", "nbscore \"$(printf 'a\\033[2Jb')\" 2>TERMINAL",
          "nbscore display hostile.pmml -o TERMINAL", "nbscore score hostile.pmml hostile.csv -o TERMINAL"}) {
        SCOPED_TRACE(script);
        ExpectPlain(Show(script));
    }
}

// Pears against apples: red weighs -2.197, which has the longest bar, and 200 weighs -1.386.
TEST_F(TerminalOutput, HasABarBesideEachWeight_WhenCasesAreExplained) {
    const std::string shown = Show("nbscore explain model.pmml cases.csv --row 1 >TERMINAL");
    EXPECT_THAT(shown, HasSubstr("  colour      red    -2.197           -2.197  ------------------------\n"));
    EXPECT_THAT(shown, HasSubstr("  weight      200    -1.386           -1.386  ---------------\n"));
    EXPECT_THAT(Show("nbscore explain model.pmml cases.csv --row 2 -o TERMINAL"),
                HasSubstr("2.197            2.197  ++++++++++++++++++++++++\n"));
}

TEST_F(TerminalOutput, IsWhatAPipeGets_WhenNothingInItIsForATerminal) {
    for (const std::string call : {"nbscore --help", "nbscore score --help", "nbscore display model.pmml",
                                   "nbscore score model.pmml cases.csv"}) {
        EXPECT_EQ(Show(call + " >TERMINAL"), RunShell(call).out) << call;
    }
}

TEST_F(TerminalOutput, KeepsItsBytes_WhenItGoesElsewhere) {
    EXPECT_THAT(Run({"display", "hostile.pmml"}).out, HasSubstr("red" + commands));
    EXPECT_THAT(Run({"score", "hostile.pmml", "hostile.csv"}).out, HasSubstr(commands));
    EXPECT_EQ(Run({"display", "hostile.pmml", "-o", "out.txt"}).exitStatus, 0);
    EXPECT_THAT(folder.Read("out.txt"), HasSubstr("red" + commands));
}

TEST_F(TerminalOutput, HasALineOfProgressThatIsWrittenOver) {
    const std::string shown =
        Show("{ cat cases.csv; sleep 1.2; tail -n 1 cases.csv; } | nbscore score model.pmml 2>TERMINAL >/dev/null");
    EXPECT_THAT(shown, ContainsRegex("\r[23] rows, [0-9]+ rows/s"));
}

}  // namespace nbscore::test
