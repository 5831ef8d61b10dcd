#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/system/Console.h"
#include "cli/system/ExitStatus.h"
#include "cli/verbs/Command.h"

namespace nbscore {

/// The command nbscore with all its verbs. Runs once.
class CommandLine {
public:
    CommandLine();

    /// Runs the command with the arguments that follow its name, in UTF-8. Never throws: errors are
    /// reported on the console's messages and in the exit status that is returned (ExitStatus).
    int Run(const std::vector<std::string>& arguments, Console& console) noexcept;

    /// All verbs and options, for the manual page.
    const CLI::App& GetApp() const { return app; }
    static std::string GetVersion();

private:
    void AddCommand(std::unique_ptr<Command> command);
    ExitStatus RunChosenCommand(Console& console);
    bool AnswersByItself(const std::vector<std::string>& arguments, Console& console);
    void RefuseUnknownArguments() const;
    void RefuseRepeatedOptions() const;
    void RequireKnownVerb(const std::vector<std::string>& arguments) const;
    /// Null when the arguments named no verb, or none was parsed yet.
    Command* FindChosenCommand() const;
    ErrorContext DescribeRun() const;

    CLI::App app;
    std::vector<std::unique_ptr<Command>> commands;
};

}  // namespace nbscore
