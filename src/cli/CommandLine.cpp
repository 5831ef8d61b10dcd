#include "cli/CommandLine.h"

#include <algorithm>

#include "cli/help/HelpText.h"
#include "cli/system/ExitStatus.h"
#include "cli/system/Interrupts.h"
#include "framework/Limits.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Score tables of cases with Naive Bayes models written in PMML.

A model is a PMML document with a Naive Bayes classifier in it. Given the values of some fields, it says which category of its target is the most probable one, and how probable each category is.)";

constexpr const char* footer = R"(Examples:

  Score every row of a table:
    nbscore score model.pmml cases.csv -o scores.csv

  See why each case is scored as it is:
    nbscore explain model.pmml cases.csv

  Look into a model:
    nbscore display model.pmml

  See what a document holds and what is wrong with it:
    nbscore check model.pmml

  Score the test cases that a model's document carries:
    nbscore verify model.pmml

  Make a model of a table whose cases have known categories:
    nbscore count cases.csv --target category -o model.pmml

  See all options of a command, with more examples:
    nbscore score --help)";

void Print(Console& console, const std::string& text) {
    console.results.Write(text);
    console.results.Commit();
}

}  // namespace

CommandLine::CommandLine() : app(description, "nbscore") {
    app.footer(footer);
    app.formatter(std::make_shared<HelpFormatter>());
    app.require_subcommand(1);
    app.allow_windows_style_options(false);
    app.set_help_flag();
    AddCommand(MakeScoreCommand(app));
    AddCommand(MakeExplainCommand(app));
    AddCommand(MakeDisplayCommand(app));
    AddCommand(MakeCheckCommand(app));
    AddCommand(MakeVerifyCommand(app));
    AddCommand(MakeCountCommand(app));
    AddCommand(MakeMergeCommand(app));
    app.set_help_flag("-h,--help", "Show this help. After a command: the help of that command.");
    app.set_version_flag("--version", "nbscore " + GetVersion(), "Show the version.");
}

void CommandLine::AddCommand(std::unique_ptr<Command> command) {
    // Verbs inherit no help option, so that theirs comes last in their lists.
    command->GetApp().set_help_flag("-h,--help", "Show this help.");
    commands.push_back(std::move(command));
}

std::string CommandLine::GetVersion() {
    return NBSCORE_VERSION;
}

int CommandLine::Run(const std::vector<std::string>& arguments, Console& console) noexcept {
    try {
        const bool answered = AnswersByItself(arguments, console);
        return static_cast<int>(answered ? ExitStatus::Fine : RunChosenCommand(console));
    } catch (...) {
        return ReportError(console.messages, DescribeRun());
    }
}

ExitStatus CommandLine::RunChosenCommand(Console& console) {
    try {
        return FindChosenCommand()->Run(console);
    } catch (const CancelledError&) {
        Interrupts::ThrowReason();
    } catch (const InputOutputError&) {
        // A signal makes a running system call fail: report the stop, not the failure.
        Interrupts::ThrowIfRequested();
        throw;
    }
}

/// Parses the arguments, and answers requests for help or the version.
bool CommandLine::AnswersByItself(const std::vector<std::string>& arguments, Console& console) {
    RequireKnownVerb(arguments);
    try {
        // Handed over last first, as the parser takes them from the end.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return false;
    } catch (const CLI::CallForHelp&) {
        Print(console, app.help());
    } catch (const CLI::CallForVersion& version) {
        Print(console, std::string(version.what()) + '\n');
    } catch (const CLI::RequiredError&) {
        // A misspelled option is the better explanation of a missing argument.
        RefuseUnknownArguments();
        throw;
    } catch (const CLI::ExtrasError&) {
        RefuseUnknownArguments();
        throw;
    } catch (const CLI::ArgumentMismatch&) {
        RefuseRepeatedOptions();
        throw;
    }
    return true;
}

/// The parser would say how many "at most" are "required".
void CommandLine::RefuseRepeatedOptions() const {
    for (const CLI::App* verb : app.get_subcommands()) {
        for (const CLI::Option* option : verb->get_options()) {
            const bool takesOne = option->get_expected_max() == 1;
            if (takesOne && option->count() > 1) {
                throw CLI::ValidationError(option->get_name(), "it is given " + std::to_string(option->count()) +
                                                                   " times, and may be given only once");
            }
        }
    }
}

void CommandLine::RefuseUnknownArguments() const {
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty()) return;
    const bool option = unknown.front().starts_with('-');
    throw CLI::ValidationError("'" + unknown.front() + (option ? "' is not an option here" : "' was not expected"));
}

/// The parser would only say that a verb is missing, and not which word is not a verb.
void CommandLine::RequireKnownVerb(const std::vector<std::string>& arguments) const {
    if (arguments.empty()) throw CLI::ValidationError("no command was given");
    const auto isWord = [](const std::string& argument) { return argument.empty() || argument.front() != '-'; };
    const auto word = std::find_if(arguments.begin(), arguments.end(), isWord);
    if (word == arguments.end()) return;
    const auto isNamed = [&word](const CLI::App* verb) { return verb->get_name() == *word; };
    const std::vector<const CLI::App*> verbs = GetVerbs(app);
    if (std::none_of(verbs.begin(), verbs.end(), isNamed)) {
        throw CLI::ValidationError("'" + *word + "' is not a command");
    }
}

Command* CommandLine::FindChosenCommand() const {
    const auto isChosen = [](const std::unique_ptr<Command>& command) { return command->GetApp().parsed(); };
    const auto chosen = std::find_if(commands.begin(), commands.end(), isChosen);
    return chosen == commands.end() ? nullptr : chosen->get();
}

ErrorContext CommandLine::DescribeRun() const {
    Command* command = FindChosenCommand();
    if (command == nullptr) return {"", app.get_name() + " --help"};
    return {command->GetDocumentName(), app.get_name() + ' ' + command->GetApp().get_name() + " --help"};
}

}  // namespace nbscore
