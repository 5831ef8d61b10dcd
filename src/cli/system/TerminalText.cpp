#include "cli/system/TerminalText.h"

#include <algorithm>

#include "framework/ControlCharacters.h"
#include "framework/Utf8Check.h"

namespace nbscore {

std::string MakePrintable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = LengthOfControl(text.substr(i));
        if (text[i] == '\n') {
            printable += "\\n";
        } else if (length == 0) {
            printable += text[i];
        } else {
            AppendEscaped(printable, text.substr(i, length));
        }
        i += std::max<std::size_t>(length, 1);
    }
    return printable;
}

void AppendEscaped(std::string& printable, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        printable += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
}

namespace {

/// Whether a text that is not empty begins with a character that is to be shown as it is, or with one that belongs to
/// the layout of lines.
bool BeginsPlain(std::string_view text) {
    return text.front() == '\n' || text.front() == '\t' || text.starts_with("\r\n") || LengthOfControl(text) == 0;
}

}  // namespace

std::string TerminalText::Take(std::string_view bytes) {
    begun += bytes;
    std::string shown;
    std::string_view rest = begun;
    while (!rest.empty() && rest != "\r") {
        const Utf8Check first = CheckUtf8(rest, 0, 1);
        if (first.verdict == Utf8Check::Verdict::Incomplete) break;
        const bool isSound = first.verdict == Utf8Check::Verdict::Sound;
        const std::string_view character = rest.substr(0, isSound ? first.position : 1);
        if (isSound && BeginsPlain(rest)) {
            shown += character;
        } else {
            AppendEscaped(shown, character);
        }
        rest.remove_prefix(character.size());
    }
    begun = std::string(rest);
    return shown;
}

std::string TerminalText::TakeRest() {
    std::string shown;
    AppendEscaped(shown, begun);
    begun.clear();
    return shown;
}

void TerminalSink::Commit() {
    terminal.Write(text.TakeRest());
    terminal.Commit();
}

TerminalMessages::TerminalMessages(std::ostream& stream)
    : messages(stream), terminal(stream.rdbuf()), buffer(*stream.rdbuf()) {
    messages.rdbuf(&buffer);
}

TerminalMessages::~TerminalMessages() {
    buffer.WriteRest();
    messages.rdbuf(terminal.rdbuf());
}

void TerminalMessages::Buffer::WriteRest() {
    const std::lock_guard lock(mutex);
    Show(text.TakeRest());
}

TerminalMessages::Buffer::int_type TerminalMessages::Buffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize TerminalMessages::Buffer::xsputn(const char* bytes, std::streamsize size) {
    const std::lock_guard lock(mutex);
    return Show(text.Take(std::string_view(bytes, static_cast<std::size_t>(size)))) ? size : 0;
}

bool TerminalMessages::Buffer::Show(const std::string& shown) {
    const auto size = static_cast<std::streamsize>(shown.size());
    return terminal.sputn(shown.data(), size) == size;
}

}  // namespace nbscore
