#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "cli/Console.h"
#include "cli/ExitStatus.h"

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

    /// Does the work, once the options are parsed, and answers how it went. Throws what ReportError understands.
    virtual ExitStatus Run(Console& console) = 0;
    /// The document that errors are about, as the caller named it; empty when there is none.
    virtual std::string GetDocumentName() const = 0;

    CLI::App& GetApp() { return app; }

protected:
    CLI::App& app;
};

}  // namespace nbscore
