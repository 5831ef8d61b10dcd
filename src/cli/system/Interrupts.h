#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

namespace nbscore {

/// While one of these lives, a request to stop (SIGINT, SIGTERM, SIGHUP, and SIGXCPU when the processor time that the
/// process was given is used up) is noted instead of ending the process, so that the run can clean up after itself; and
/// a write to a closed pipe, or to a file that may not get longer, fails instead of ending the process.
///
/// A signal that was ignored when the program started stays ignored, as nohup needs. The second request is
/// ignored as well, because terminals and their shells may both send one; the next one of that kind ends the
/// process at once. At most one may live at a time. The static operations may be called at any time, from any
/// thread.
class Interrupts {
public:
    /// What a request does where the run has nothing to clean up (UnfinishedOutput).
    enum class WithNothingToCleanUp {
        Note,
        /// The process says so and ends at once, with the exit status of such a run: what it waits for, or freeing what
        /// it built, would take too long.
        EndProcess
    };

    /// Throws InputOutputError when the system lacks the resources for this.
    explicit Interrupts(WithNothingToCleanUp manner = WithNothingToCleanUp::Note);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    /// Whether a stop was requested, or the time that the run may take is over (TimeLimit).
    static bool AreRequested();
    /// Throws InterruptedError, or TimeLimitError, when that is so.
    static void ThrowIfRequested();
    /// Throws InterruptedError when a signal requested the stop, else TimeLimitError. For callers that know that a stop
    /// was requested, though the time limit behind it may be gone by now.
    [[noreturn]] static void ThrowReason();
    /// Waits until there is something to read from a file descriptor, or its end; throws as soon as a stop is
    /// requested.
    static void WaitUntilReadable(int descriptor);
    /// The same for room to write something, which is PIPE_BUF bytes where it is a pipe.
    static void WaitUntilWritable(int descriptor);
};

/// While one of these lives, a stop is also requested when so much time has passed. At most one may live at a time.
class TimeLimit {
public:
    /// @param time counted from here; nothing for a run without a limit.
    explicit TimeLimit(std::optional<std::chrono::duration<double>> time);
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
};

/// While one of these lives, a request to stop is always noted, because there is something to clean up. Where the
/// process would end at once, it ends when this is gone; on POSIX systems also when the run has not noticed the request
/// in a tenth of a second. At most one may live at a time.
class UnfinishedOutput {
public:
    UnfinishedOutput();
    ~UnfinishedOutput();
    UnfinishedOutput(const UnfinishedOutput&) = delete;
    UnfinishedOutput& operator=(const UnfinishedOutput&) = delete;

    /// The file to remove when the run has not noticed the request.
    static void SetTemporaryFile(const std::filesystem::path& path);
    /// Another one to remove, which does not tell whether the output is complete.
    static void SetFurtherTemporaryFile(const std::filesystem::path& path);
    /// From now on the output is complete: whenever the process ends, it went well.
    static void NoteCommitted();
};

}  // namespace nbscore
