#include "cli/verbs/Arguments.h"

#include <system_error>
#include <utility>

#include "cli/system/InterruptibleOutput.h"

namespace nbscore {

std::filesystem::path PathFromArgument(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string RefuseEmptyName(const std::string& text) {
    return text.empty() ? "the name is empty" : "";
}

std::optional<char> ReadDelimiter(std::string_view text) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() != 1) return std::nullopt;
    const char character = text.front();
    const bool ascii = static_cast<unsigned char>(character) < 0x80;
    const bool reserved = character == '"' || character == '\r' || character == '\n' || character == '\0';
    if (!ascii || reserved) return std::nullopt;
    return character;
}

namespace {

constexpr const char* standardInput = "-";

std::string NameSource(const std::string& argument) {
    return argument == standardInput ? "standard input" : argument;
}

Descriptor OpenSource(const std::string& argument) {
    if (argument == standardInput) return Descriptor::StandardInput();
    return Descriptor::Open(PathFromArgument(argument), argument);
}

}  // namespace

CaseInput::CaseInput(const std::string& argument)
    : CaseInput(OpenSource(argument), NameSource(argument), argument == standardInput && IsTerminal(0)) {}

CaseInput::CaseInput(Descriptor descriptor, std::string sourceName, bool typedIn)
    : name(std::move(sourceName)),
      typed(typedIn),
      size(descriptor.GetRemainingSize()),
      buffer(std::move(descriptor), name),
      stream(&buffer) {
    stream.exceptions(std::ios::badbit);
}

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
