#include "cli/verbs/OutputArgument.h"

#include <system_error>
#include <utility>

#include "cli/system/InterruptibleOutput.h"
#include "cli/verbs/Options.h"

namespace nbscore {

void OutputArgument::Declare(CLI::App& app) {
    app.add_option(
           "-o,--output", destination,
           "Write the result to FILE instead of standard output (which is also \"-\"). The file appears, or replaces "
           "an earlier one, only when it is whole: a run that fails or is interrupted changes nothing.")
        ->type_name("FILE")
        ->check(RefuseEmptyName);
}

OpenedOutput OutputArgument::Open(Console& console, const std::string& modelDocument) const {
    auto unfinished = std::make_unique<UnfinishedOutput>();
    if (destination == "-") {
        return {std::move(unfinished), nullptr, nullptr, console.results, console.resultsAreTerminal};
    }
    std::error_code absent;
    if (std::filesystem::equivalent(PathFromArgument(destination), PathFromArgument(modelDocument), absent)) {
        throw CLI::ValidationError("--output", "'" + destination + "' is the model's own document");
    }
    auto file = std::make_unique<OutputFile>(PathFromArgument(destination), InterruptibleWriting());
    UnfinishedOutput::SetTemporaryFile(file->GetTemporaryPath());
    if (!file->IsTerminal()) {
        OutputSink& sink = *file;
        return {std::move(unfinished), std::move(file), nullptr, sink};
    }
    auto shown = std::make_unique<TerminalSink>(*file);
    OutputSink& sink = *shown;
    return {std::move(unfinished), std::move(file), std::move(shown), sink, true};
}

void OpenedOutput::Commit() const {
    sink.Commit();
    UnfinishedOutput::NoteCommitted();
}

}  // namespace nbscore
