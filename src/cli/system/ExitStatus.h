#pragma once

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

}  // namespace nbscore
