#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// What the command tells whoever started it. The numbers are a promise to scripts.
///
/// A run that a signal ended has 128 and the signal's number, as shells count.
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

/// What a run was about when it failed.
struct ErrorContext {
    /// The document, for errors that do not name it themselves.
    std::string document;
    /// The call that shows help, such as "nbscore score --help".
    std::string helpCall;
};

/// Says what the exception being handled means, in one line or a few, and gives the exit status for it. To be called in
/// a catch block; never throws. What comes from outside is made printable.
int ReportError(std::ostream& messages, const ErrorContext& context) noexcept;

}  // namespace nbscore
