#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "cli/system/Console.h"
#include "cli/system/ExitStatus.h"

namespace nbscore {

/// One verb of the command line: its options and what it does. Each verb is a file of its own.
class Command {
public:
    /// @param parent the whole command line, to which the verb is added.
    /// @param description its first line is the summary in lists of verbs; see HelpText for the rest.
    Command(CLI::App& parent, const std::string& name, const std::string& description)
        : app(*parent.add_subcommand(name, description)) {}
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /// Does the work once the options are parsed. Throws what ReportError understands.
    virtual ExitStatus Run(Console& console) = 0;
    /// The document that errors are about, as the caller named it; empty when there is none.
    virtual std::string GetDocumentName() const = 0;

    CLI::App& GetApp() { return app; }

protected:
    CLI::App& app;
};

/// @{
/// The verbs; the comment of each one's class says what it does.
std::unique_ptr<Command> MakeCheckCommand(CLI::App& parent);
std::unique_ptr<Command> MakeCountCommand(CLI::App& parent);
std::unique_ptr<Command> MakeDisplayCommand(CLI::App& parent);
std::unique_ptr<Command> MakeExplainCommand(CLI::App& parent);
std::unique_ptr<Command> MakeMergeCommand(CLI::App& parent);
std::unique_ptr<Command> MakeScoreCommand(CLI::App& parent);
std::unique_ptr<Command> MakeVerifyCommand(CLI::App& parent);
/// @}

}  // namespace nbscore
