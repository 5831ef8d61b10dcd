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
        /// The process says so and ends, with the exit status that such a run has, wherever it is: what it waits for,
        /// or freeing what it built, would take longer than whoever asked wants to wait.
        EndProcess
    };

    /// Throws InputOutputError when the system gives not even what this needs.
    explicit Interrupts(WithNothingToCleanUp manner = WithNothingToCleanUp::Note);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    /// Whether a stop was requested, or the time that the run may take is over (TimeLimit).
    static bool AreRequested();
    /// Throws InterruptedError, or TimeLimitError, when that is so.
    static void ThrowIfRequested();
    /// Throws InterruptedError when a signal asked for the stop, else TimeLimitError: for whoever knows that a stop was
    /// requested, though the time limit that did so may be gone by now.
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

/// While one of these lives, a request to stop is noted in any case, because there is something to clean up. Where the
/// process then would end, that happens when this is gone; or on POSIX systems, if nobody has heard of the request in a
/// tenth of a second, at once. At most one may live at a time.
class UnfinishedOutput {
public:
    UnfinishedOutput();
    ~UnfinishedOutput();
    UnfinishedOutput(const UnfinishedOutput&) = delete;
    UnfinishedOutput& operator=(const UnfinishedOutput&) = delete;

    /// The file that is to be removed when nobody has heard.
    static void SetTemporaryFile(const std::filesystem::path& path);
    /// From now on, nothing that was asked for is missing: whenever the process ends, it went well.
    static void NoteCommitted();
};

}  // namespace nbscore
