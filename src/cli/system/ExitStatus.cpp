#include "cli/system/ExitStatus.h"

namespace nbscore {

const std::vector<ExitStatusMeaning>& GetExitStatusMeanings() {
    static const std::vector<ExitStatusMeaning> meanings = {
        {"0", "All went well."},
        {"1",
         "The table of cases was refused: a row or a column is not as it must be. Or a document's own test cases "
         "differ from what its model gives."},
        {"2", "The command was called in a way that it does not understand."},
        {"3", "The model's document was refused, or the model in it cannot score."},
        {"4", "Input or output failed: a file that is not there, a full disk, a closed pipe."},
        {"5", "The run took more time than it was allowed."},
        {"128+N", "Signal N ended the run, such as 130 for an interrupt from the keyboard."},
    };
    return meanings;
}

int GetExitStatusOfSignal(int signal) {
    return 128 + signal;
}

}  // namespace nbscore
