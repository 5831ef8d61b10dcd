#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/system/Console.h"
#include "cli/system/Descriptor.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "output/OutputFile.h"
#include "table/TableOptions.h"

namespace nbscore {

/// The path that a command-line argument names. Arguments are UTF-8 on every system.
std::filesystem::path PathFromArgument(const std::string& text);

/// Checks an argument that names a file: an empty text, such as from an unset shell variable, is refused.
std::string RefuseEmptyName(const std::string& text);

/// Adds an option whose value is one of a few words. The target keeps its value when the option is not given.
template <typename Choice>
CLI::Option* AddChoice(CLI::App& app, const std::string& name, Choice& target,
                       const std::vector<std::pair<std::string, Choice>>& choices, const std::string& description) {
    std::string words;
    for (const auto& choice : choices)
        words += (words.empty() ? "" : "|") + choice.first;
    const auto take = [name, &target, choices, words](const std::string& text) {
        for (const auto& [word, value] : choices) {
            if (text == word) {
                target = value;
                return;
            }
        }
        throw CLI::ValidationError(name, "'" + text + "' is not one of " + words);
    };
    return app.add_option_function<std::string>(name, take, description)->type_name(words);
}

/// The character that stands between cells, from the text of an option: one ASCII character, or "tab" or "\t"
/// for a tabulator. Nothing for what cannot be one: a quote, a line break, NUL, other texts.
std::optional<char> ReadDelimiter(std::string_view text);

/// The table of cases that a CASES argument names: a file, or standard input for "-".
class CaseInput {
public:
    /// Throws InputOutputError when the file cannot be opened.
    explicit CaseInput(const std::string& argument);
    CaseInput(const CaseInput&) = delete;
    CaseInput& operator=(const CaseInput&) = delete;

    /// Throws InputOutputError and InterruptedError out of its reading operations.
    std::istream& GetStream() { return stream; }
    /// What errors call the table.
    const std::string& GetName() const { return name; }
    /// Its size in bytes, where it is known before reading.
    std::optional<std::uint64_t> GetSize() const { return size; }
    /// Whether it is typed on a terminal.
    bool IsTyped() const { return typed; }

private:
    CaseInput(Descriptor descriptor, std::string sourceName, bool typedIn);

    std::string name;
    bool typed;
    std::optional<std::uint64_t> size;
    DescriptorBuffer buffer;
    std::istream stream;
};

/// The CASES argument and the options about reading it, the same in every verb that reads a table.
class TableArgument {
public:
    void DeclareCases(CLI::App& app);
    /// --delimiter, --bad-values, --allow-missing-fields and --allow-empty.
    void DeclareReading(CLI::App& app);

    /// As it was given; "-" for standard input.
    const std::string& GetCases() const { return cases; }
    /// Between the cells.
    char GetDelimiter() const { return delimiter; }
    const CaseBinderOptions& GetBinding() const { return binding; }
    /// Whether a table with a header and no case is fine.
    bool AllowsEmpty() const { return allowEmpty; }

    /// Tells people at a terminal how to type a table.
    static void ExplainTyping(const CaseInput& input, Console& console);

private:
    std::string cases = "-";
    char delimiter = ',';
    CaseBinderOptions binding;
    bool allowEmpty = false;
};

/// A file to write, which appears when it is committed.
struct OpenedFile {
    std::unique_ptr<OutputFile> file;
    std::unique_ptr<TerminalSink> shown;  // in front of a file that is a terminal

    OutputSink& GetSink() const { return shown ? static_cast<OutputSink&>(*shown) : *file; }
};

/// @param destination not empty. Throws InputOutputError when it cannot be written.
OpenedFile OpenFile(const std::string& destination);

/// Whether two arguments name one file, which need not be there.
bool NameOneFile(const std::string& argument, const std::string& other);

/// A run's output: a file, which appears when it is committed, or standard output.
struct OpenedOutput {
    std::unique_ptr<UnfinishedOutput> unfinished;  // declared first, so that it is destroyed last
    OpenedFile file;                               // none for standard output
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
    /// As it was given; "-" for standard output.
    const std::string& GetDestination() const { return destination; }

private:
    std::string destination = "-";
};

}  // namespace nbscore
