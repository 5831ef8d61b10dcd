#include "ChildRun.h"

#include <sstream>
#include <stdexcept>

#include "common/ProcessRun.h"

namespace nbscore::bench {

ChildRun RunChild(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {GetOwnProgram()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun process = RunProcess(words);
    std::istringstream told(process.output);
    ChildRun run;
    told >> run.seconds >> run.translatorSeconds;
    if (told.fail()) throw std::runtime_error("the load \"" + arguments.front() + "\" told no times");
    run.peakMegabytes = process.peakMegabytes;
    return run;
}

}  // namespace nbscore::bench
