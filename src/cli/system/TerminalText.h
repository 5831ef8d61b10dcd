#pragma once

#include <mutex>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "output/OutputSink.h"

namespace nbscore {

/// A text for a message, in which control characters (LengthOfControl) are written as escapes: names and cells come
/// from elsewhere and must neither break the line nor steer the terminal.
std::string MakePrintable(std::string_view text);

/// Each byte as an escape, such as \x1b.
void AppendEscaped(std::string& printable, std::string_view bytes);

/// Makes everything that goes to a terminal harmless: documents and tables may hold characters that control it. Control
/// characters (LengthOfControl) and bytes that are no UTF-8 become escapes, such as \x1b; tabs and line ends stay. The
/// text may come in pieces of any length.
class TerminalText {
public:
    /// What can be shown of everything taken so far and was not returned before.
    std::string Take(std::string_view bytes);
    /// The rest, at the end of the text.
    std::string TakeRest();

private:
    /// The beginning of a character, or a carriage return that may belong to the end of a line.
    std::string begun;
};

/// An output sink in front of a terminal's.
class TerminalSink : public OutputSink {
public:
    /// @param sink borrowed.
    explicit TerminalSink(OutputSink& sink) : terminal(sink) {}

    void Write(std::string_view bytes) override { terminal.Write(text.Take(bytes)); }
    void Flush() override { terminal.Flush(); }
    void Commit() override;

private:
    OutputSink& terminal;
    TerminalText text;
};

/// While it lives, everything written to a stream that goes to a terminal is made harmless, from any thread.
class TerminalMessages {
public:
    /// @param stream borrowed.
    explicit TerminalMessages(std::ostream& stream);
    ~TerminalMessages();
    TerminalMessages(const TerminalMessages&) = delete;
    TerminalMessages& operator=(const TerminalMessages&) = delete;

    /// The terminal itself, for writing control characters.
    std::ostream& GetTerminal() { return terminal; }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(std::streambuf& buffer) : terminal(buffer) {}
        void WriteRest();

    protected:
        int_type overflow(int_type character) override;
        std::streamsize xsputn(const char* bytes, std::streamsize size) override;
        int sync() override { return terminal.pubsync(); }

    private:
        bool Show(const std::string& shown);

        std::streambuf& terminal;
        std::mutex mutex;
        TerminalText text;
    };

    std::ostream& messages;
    std::ostream terminal;
    Buffer buffer;
};

}  // namespace nbscore
