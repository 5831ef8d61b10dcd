#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// The exit status of the command. Scripts rely on the numbers.
///
/// A run that a signal ended has 128 plus the signal's number, as in shells.
enum class ExitStatus {
    Fine = 0,
    CaseDataRefused = 1,
    Usage = 2,
    DocumentRefused = 3,
    InputOutputFailed = 4,
    TimeIsOver = 5,
};

struct ExitStatusMeaning {
    std::string_view status;
    std::string_view meaning;
};

/// Every exit status as the help and the manual page list it.
const std::vector<ExitStatusMeaning>& GetExitStatusMeanings();

/// The number for a run that a signal ended.
int GetExitStatusOfSignal(int signal);

/// What a failed run was about.
struct ErrorContext {
    /// The document, for errors that do not name it themselves.
    std::string document;
    /// The call that shows help, such as "nbscore score --help".
    std::string helpCall;
};

/// Reports the exception being handled, in one line or a few, and returns the exit status for it. To be called in a
/// catch block; never throws. Texts from outside are made printable.
int ReportError(std::ostream& messages, const ErrorContext& context) noexcept;

}  // namespace nbscore
