#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Descriptor.h"
#include "cli/InterruptibleWriting.h"
#include "cli/Interrupts.h"
#include "host/StandardOutput.h"

int main(int argc, char** argv) {
    nbscore::OpenMissingStandardStreams();
    const nbscore::Interrupts interrupts;
    nbscore::StandardOutput results(nbscore::InterruptibleWriting());
    nbscore::Console console{results, std::cerr, nbscore::IsTerminal(1), nbscore::IsTerminal(2)};
    nbscore::CommandLine commandLine;
    return commandLine.Run({argv + (argc > 0 ? 1 : 0), argv + argc}, console);
}
