#pragma once

namespace nbscore {

/// While one of these lives, a request to stop (SIGINT, SIGTERM, SIGHUP, and SIGXCPU when the processor time that the
/// process was given is used up) is noted instead of ending the process, so that the run can clean up after itself; and a
/// write to a closed pipe, or to a file that may not get longer, fails instead of ending the process.
///
/// A signal that was ignored when the program started stays ignored, as nohup needs. The second request is
/// ignored as well, because terminals and their shells may both send one; the next one of that kind ends the
/// process at once. At most one may live at a time. The static operations may be called at any time, from any
/// thread.
class Interrupts {
public:
    /// Throws InputOutputError when the system gives not even what this needs.
    Interrupts();
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    /// Throws InterruptedError when a stop was requested.
    static void ThrowIfRequested();
    /// Waits until there is something to read from a file descriptor, or its end; throws InterruptedError as
    /// soon as a stop is requested.
    static void WaitUntilReadable(int descriptor);
    /// The same for room to write something, which is PIPE_BUF bytes where it is a pipe.
    static void WaitUntilWritable(int descriptor);
};

}  // namespace nbscore
