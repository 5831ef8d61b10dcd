#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "cli/system/Console.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "output/OutputFile.h"

namespace nbscore {

/// A run's output: a file, which appears when it is committed, or standard output.
struct OpenedOutput {
    std::unique_ptr<UnfinishedOutput> unfinished;  // declared first, so that it goes last
    std::unique_ptr<OutputFile> file;              // null for standard output
    std::unique_ptr<TerminalSink> fileShown;       // in front of a file that is a terminal
    OutputSink& sink;
    bool isTerminal = false;

    /// Makes it final, at the end of a run that went well.
    void Commit() const;
};

/// The --output option, the same in every verb that writes a result.
class OutputArgument {
public:
    void Declare(CLI::App& app);

    /// Opens the output. Throws a usage error when it is the file of the model, which it would destroy.
    OpenedOutput Open(Console& console, const std::string& modelDocument) const;

private:
    std::string destination = "-";
};

}  // namespace nbscore
