#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Descriptor.h"
#include "cli/InterruptibleWriting.h"
#include "cli/Interrupts.h"
#include "cli/ProgramArguments.h"
#include "cli/Utf8Console.h"
#include "host/StandardOutput.h"

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    nbscore::OpenMissingStandardStreams();
    const nbscore::Utf8Console utf8Console;
    const nbscore::Interrupts interrupts;
    nbscore::StandardOutput results(nbscore::InterruptibleWriting());
    nbscore::Console console{results, std::cerr, nbscore::IsTerminal(1), nbscore::IsTerminal(2)};
    nbscore::CommandLine commandLine;
    return commandLine.Run(nbscore::GetProgramArguments(argc, argv), console);
}
