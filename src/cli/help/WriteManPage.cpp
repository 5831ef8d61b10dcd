/// @file
/// A program of the build, never installed: writes the command's manual page to the file that its argument
/// names.

#include <fstream>
#include <iostream>

#include "cli/CommandLine.h"
#include "cli/help/HelpText.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: nbscore_manpage FILE\n";
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    const nbscore::CommandLine commandLine;
    file << nbscore::MakeManPage(commandLine.GetApp(), nbscore::CommandLine::GetVersion());
    file.close();
    if (!file) {
        std::cerr << "nbscore_manpage: cannot write " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
