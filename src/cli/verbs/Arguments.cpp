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

void TableArgument::DeclareCases(CLI::App& app) {
    app.add_option("CASES", cases, "The table of cases; \"-\" or nothing for standard input.")
        ->type_name("")
        ->check(RefuseEmptyName);
}

void TableArgument::DeclareReading(CLI::App& app) {
    const auto takeDelimiter = [this](const std::string& text) {
        const std::optional<char> read = ReadDelimiter(text);
        if (!read) {
            throw CLI::ValidationError("--delimiter", "'" + text +
                                                          "' is not one ASCII character, or is a quote or a line "
                                                          "break; for a tabulator say tab");
        }
        delimiter = *read;
    };
    app.add_option_function<std::string>("--delimiter", takeDelimiter,
                                         "What stands between cells, in the input and in the result: one ASCII "
                                         "character, or tab. A comma if not given.")
        ->type_name("CHAR");
    AddChoice(app, "--bad-values", binding.badValues, {{"stop", BadValues::Stop}, {"missing", BadValues::Missing}},
              "Where a numeric field holds a text that is no number: stop with an error (the default), or take the "
              "value as missing. By the standard's rule, if not given, the value is treated as the document says of "
              "invalid ones.");
    app.add_flag("--allow-missing-fields", binding.allowMissingFields,
                 "Take a field that the model needs, as an input or to compute a derived one, and that the table lacks "
                 "as missing in every case, instead of as an error.");
    app.add_flag("--allow-empty", allowEmpty,
                 "Accept a table with a header and no case; the result then has no case either.");
}

void TableArgument::ExplainTyping(const CaseInput& input, Console& console) {
    if (!input.IsTyped()) return;
    console.messages << "Type or paste a table: a line with the names of the columns, then a line for each case. "
                        "End with Ctrl-D (Ctrl-Z on Windows).\n"
                     << std::flush;
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
