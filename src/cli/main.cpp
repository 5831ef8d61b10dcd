#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/system/Descriptor.h"
#include "cli/system/ErrorReport.h"
#include "cli/system/InterruptibleOutput.h"
#include "cli/system/Interrupts.h"
#include "cli/system/ProgramStart.h"
#include "cli/system/StandardOutput.h"
#include "cli/system/TerminalText.h"

namespace nbscore {
namespace {

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
    const nbscore::Utf8Console utf8Console;
    try {
        return nbscore::Run(nbscore::GetProgramArguments(argc, argv));
    } catch (...) {
        // What the system did not even give for a start.
        return nbscore::ReportError(std::cerr, {});
    }
}
