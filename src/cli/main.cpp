#include <iostream>
#include <optional>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <string_view>
#endif

#include "cli/CommandLine.h"
#include "cli/system/Descriptor.h"
#include "cli/system/ExitStatus.h"
#include "cli/system/InterruptibleOutput.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"

namespace nbscore {
namespace {

#ifdef _WIN32

using SystemCharacter = wchar_t;

/// What is no text in UTF-16 becomes U+FFFD.
std::string AsUtf8(const wchar_t* argument) {
    const std::wstring_view text(argument);
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
    return utf8;
}

/// Lets a console show the UTF-8 that is written to it while this object lives, and lets the line ends of messages be
/// as they are written.
class Utf8Console {
public:
    Utf8Console() : earlierCodePage(GetConsoleOutputCP()) {
        if (earlierCodePage != 0) SetConsoleOutputCP(CP_UTF8);
        _setmode(_fileno(stderr), _O_BINARY);
    }
    ~Utf8Console() {
        if (earlierCodePage != 0) SetConsoleOutputCP(earlierCodePage);
    }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    /// 0 when there is no console.
    unsigned earlierCodePage;
};

#else

using SystemCharacter = char;

std::string AsUtf8(const char* argument) {
    return argument;
}

/// Consoles show UTF-8 here.
class Utf8Console {};

#endif

/// The arguments that follow the program's name, in UTF-8.
std::vector<std::string> GetProgramArguments(int count, SystemCharacter** arguments) {
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(AsUtf8(arguments[i]));
    return texts;
}

int Run(const std::vector<std::string>& arguments) {
    const Interrupts interrupts(Interrupts::WithNothingToCleanUp::EndProcess);
    StandardOutput output(InterruptibleWriting());
    TerminalSink shownOutput(output);
    std::optional<TerminalMessages> shownMessages;
    if (IsTerminal(2)) shownMessages.emplace(std::cerr);

    const bool resultsAreTerminal = IsTerminal(1);
    OutputSink& results = resultsAreTerminal ? static_cast<OutputSink&>(shownOutput) : output;
    std::ostream* const messagesTerminal = shownMessages ? &shownMessages->GetTerminal() : nullptr;
    Console console{results, std::cerr, resultsAreTerminal, messagesTerminal};
    CommandLine commandLine;
    return commandLine.Run(arguments, console);
}

}  // namespace
}  // namespace nbscore

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    nbscore::OpenMissingStandardStreams();
    [[maybe_unused]] const nbscore::Utf8Console utf8Console{};
    try {
        return nbscore::Run(nbscore::GetProgramArguments(argc, argv));
    } catch (...) {
        // The system lacks the resources even to begin.
        return nbscore::ReportError(std::cerr, {});
    }
}
