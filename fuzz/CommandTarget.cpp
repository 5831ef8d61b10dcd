// Bytes as the arguments of the command, which zeros separate. The command runs in a folder of its own and names no
// file outside it. Whatever the arguments, it ends with one of the exit statuses in the manual, says why when that is
// not 0, and prints nothing that could send commands to a terminal.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "cli/TestConsole.h"
#include "cli/system/ExitStatus.h"
#include "framework/ControlCharacters.h"
#include "support/TemporaryFolder.h"

namespace nbscore::fuzz {
namespace {

namespace fs = std::filesystem;

/// Zeros separate arguments, and a slash could name a file elsewhere.
std::vector<std::string> ArgumentsIn(std::string_view bytes) {
    std::vector<std::string> arguments(1);
    for (const char byte : bytes) {
        if (byte == '\0') {
            arguments.emplace_back();
        } else {
            arguments.back() += byte == '/' ? '_' : byte;
        }
    }
    return arguments;
}

/// The folder that the command runs in, with a model and a table in it.
class WorkingFolder {
public:
    WorkingFolder() { fs::current_path(folder.GetPath()); }

    /// As it is before every run.
    void Restore() const {
        for (const auto& entry : fs::directory_iterator("."))
            fs::remove_all(entry.path());
        Copy("titanic/titanic.pmml", "m");
        Copy("titanic/people.csv", "t");
        Copy("offers/offers.pmml", "o");
    }

private:
    static void Copy(const fs::path& example, const char* name) { fs::copy_file(NBSCORE_EXAMPLES / example, name); }

    test::TemporaryFolder folder;
};

bool IsListed(int status) {
    const std::vector<ExitStatusMeaning>& meanings = GetExitStatusMeanings();
    return std::any_of(meanings.begin(), meanings.end(),
                       [status](const ExitStatusMeaning& meaning) { return meaning.status == std::to_string(status); });
}

/// Line by line, so that line breaks may stay.
bool IsPlain(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (MaskControls(line) != line) return false;
    }
    return true;
}

/// What these verbs write for people holds no raw control characters, unlike tables of scores and output for programs.
bool WritesForPeople(const std::vector<std::string>& arguments) {
    const bool isForMachines = std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.ends_with("json") || argument.ends_with("jsonl") || argument.ends_with("csv");
    });
    const std::string& verb = arguments.front();
    return !isForMachines && (verb == "check" || verb == "verify" || verb == "explain");
}

void TryArguments(std::string_view bytes) {
    static const WorkingFolder folder;
    folder.Restore();
    const std::vector<std::string> arguments = ArgumentsIn(bytes);
    const test::InProcessRun run(arguments);
    const std::string messages = run.messages.str();
    Require(IsListed(run.exitStatus), "the exit status is a listed one");
    Require(run.exitStatus == 0 || !messages.empty() || !run.results.text.empty(), "a run that fails says why");
    Require(IsPlain(messages), "messages are text without control characters");
    Require(!WritesForPeople(arguments) || IsPlain(run.results.text), "reports are text without control characters");
}

}  // namespace
}  // namespace nbscore::fuzz

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // A command that reads its standard input finds it empty.
    nbscore::fuzz::Require(std::freopen("/dev/null", "r", stdin) != nullptr, "standard input can be emptied");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nbscore::fuzz::TryArguments(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
