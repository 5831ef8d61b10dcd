#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "framework/ModelSelfCheck.h"

namespace nbscore {

/// A table of cases that cannot be used: names the file, the line and the cell or column at fault.
class CaseDataError : public std::runtime_error {
public:
    /// @param lineNumber from 1; 0 when no line is at fault.
    CaseDataError(const std::string& sourceName, std::uint64_t lineNumber, const std::string& problemText)
        : std::runtime_error(sourceName + (lineNumber == 0 ? "" : ":" + std::to_string(lineNumber)) + ": " +
                             problemText),
          problem(problemText) {}

    /// The message without source and line.
    const std::string& GetProblem() const { return problem; }

private:
    std::string problem;
};

/// Reading or writing failed: a file that is not there, a full disk, a closed pipe, a plug-in that does not load.
class InputOutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A model that was read but would stop the process when it scores. The message says why, without the file's name.
class UnscorableModelError : public std::runtime_error {
public:
    explicit UnscorableModelError(const std::string& message)
        : UnscorableModelError(ScoringObstacle{ScoringObstacle::Other, message}) {}
    explicit UnscorableModelError(const ScoringObstacle& obstacle)
        : std::runtime_error(obstacle.message), kind(obstacle.kind) {}

    ScoringObstacle::Kind GetKind() const { return kind; }

private:
    ScoringObstacle::Kind kind;
};

/// The run was asked to stop (an interrupt from the keyboard, a request to terminate).
class InterruptedError : public std::runtime_error {
public:
    explicit InterruptedError(int signalNumber) : std::runtime_error("interrupted"), signal(signalNumber) {}
    int GetSignal() const { return signal; }

private:
    int signal;
};

/// The run took longer than its caller allowed.
class TimeLimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// To be called in a catch-all handler around a call into a plug-in: throws the plug-in's exception again as one of
/// this program's own, which stays valid when the plug-in is unloaded.
///
/// A VeskException stays one, also where it was thrown as a pointer, which is freed, and so does std::bad_alloc;
/// anything else becomes an InputOutputError that says what was being done.
[[noreturn]] void RethrowPluginFailure(const std::string& whatWasDone);

}  // namespace nbscore
