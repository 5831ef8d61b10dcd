#include <iostream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/Descriptor.h"
#include "cli/ErrorReport.h"
#include "cli/InterruptibleWriting.h"
#include "cli/Interrupts.h"
#include "cli/ProgramArguments.h"
#include "cli/Utf8Console.h"
#include "host/StandardOutput.h"

namespace nbscore {
namespace {

int Run(const std::vector<std::string>& arguments) {
    const Interrupts interrupts;
    StandardOutput results(InterruptibleWriting());
    Console console{results, std::cerr, IsTerminal(1), IsTerminal(2)};
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
