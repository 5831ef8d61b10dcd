#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "check/DocumentCheck.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/ModelArgument.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Say what documents hold and what is wrong with them.

Reads each DOCUMENT without scoring anything. Tells the kind of model, its fields and their roles, the target's categories, and each classifier's threshold, inputs and counts; then what keeps the document from being scored, what may not be as it was meant, and what scoring ignores in it, each with what to do about it. At the end stands whether the other rule of scoring could score the document (--rule).)";

constexpr const char* footer = R"(Examples:

  See whether a document can be scored:
    nbscore check model.pmml

  See whether the standard's rule can score it:
    nbscore check model.pmml --rule standard

  Check many, for a script:
    nbscore check models/*.pmml --format json

  See what would be rewritten in a newer producer's document:
    nbscore check model.pmml --adapt)";

/// Line by line, so that nothing in a document can send commands to the terminal on which the report is read later.
std::string MakePrintableLines(const std::string& text) {
    std::string printable;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        printable += MakePrintable(text.substr(begin, end - begin)) + '\n';
        begin = end + 1;
    }
    return printable;
}

/// nbscore check DOCUMENT…: says what kind of model each document holds and what is wrong with it, without scoring.
class CheckCommand : public Command {
public:
    explicit CheckCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    /// Problems name their document themselves.
    std::string GetDocumentName() const override { return std::string(); }

private:
    enum class Format { Text, Json };

    std::vector<std::string> documents;
    Format format = Format::Text;
    ReadingArgument reading;
};

CheckCommand::CheckCommand(CLI::App& parent) : Command(parent, "check", description) {
    app.footer(footer);
    app.add_option("DOCUMENT", documents, "The PMML documents to check: files, or /dev/stdin for standard input.")
        ->type_name("")
        ->required()
        ->check(RefuseEmptyName);
    AddChoice(app, "--format", format, {{"text", Format::Text}, {"json", Format::Json}},
              "Write text for people (the default) or JSON for machines.");
    reading.Declare(app);
}

ExitStatus CheckCommand::Run(Console& console) {
    const TimeLimit timeLimit(reading.GetMaxTime());
    const std::shared_ptr<PluginLibrary> plugin = reading.LoadPlugin();
    std::vector<DocumentCheck> checks;
    for (const std::string& document : documents) {
        Interrupts::ThrowIfRequested();
        checks.push_back(CheckDocument(plugin, PathFromArgument(document), reading.IsAdapting(), reading.GetLimits(),
                                       reading.GetRule()));
        if (format == Format::Text) {
            console.results.Write(MakePrintableLines(WriteCheckAsText(checks.back())));
            console.results.Flush();
        }
    }
    if (format == Format::Json) console.results.Write(WriteChecksAsJson(checks));
    console.results.Commit();
    if (!std::ranges::all_of(checks, &DocumentCheck::IsReadable)) return ExitStatus::InputOutputFailed;
    const bool canBeScored = std::ranges::all_of(checks, &DocumentCheck::CanBeScored);
    return canBeScored ? ExitStatus::Fine : ExitStatus::DocumentRefused;
}

}  // namespace

std::unique_ptr<Command> MakeCheckCommand(CLI::App& parent) {
    return std::make_unique<CheckCommand>(parent);
}

}  // namespace nbscore
