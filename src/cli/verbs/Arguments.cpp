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

OpenedFile OpenFile(const std::string& destination) {
    OpenedFile opened{std::make_unique<OutputFile>(PathFromArgument(destination), InterruptibleWriting()), nullptr};
    if (opened.file->IsTerminal()) opened.shown = std::make_unique<TerminalSink>(*opened.file);
    return opened;
}

bool NameOneFile(const std::string& argument, const std::string& other) {
    std::error_code absent;
    if (std::filesystem::equivalent(PathFromArgument(argument), PathFromArgument(other), absent)) return true;
    // Of files that are not there yet, the path tells.
    const auto pathOf = [&absent](const std::string& text) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(PathFromArgument(text), absent), absent);
    };
    const std::filesystem::path path = pathOf(argument);
    return !path.empty() && path == pathOf(other);
}

OpenedOutput OutputArgument::Open(Console& console, const std::string& modelDocument) const {
    auto unfinished = std::make_unique<UnfinishedOutput>();
    if (destination == "-") {
        return {std::move(unfinished), {}, console.results, console.resultsAreTerminal};
    }
    if (NameOneFile(destination, modelDocument)) {
        throw CLI::ValidationError("--output", "'" + destination + "' is the model's own document");
    }
    OpenedFile file = OpenFile(destination);
    UnfinishedOutput::SetTemporaryFile(file.file->GetTemporaryPath());
    OutputSink& sink = file.GetSink();
    const bool isTerminal = file.shown != nullptr;
    return {std::move(unfinished), std::move(file), sink, isTerminal};
}

void OpenedOutput::Commit() const {
    sink.Commit();
    UnfinishedOutput::NoteCommitted();
}

}  // namespace nbscore
