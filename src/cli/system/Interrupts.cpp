#include "cli/system/Interrupts.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "cli/system/ExitStatus.h"
#include "output/HostError.h"

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>

#include "output/MessageText.h"
#endif

namespace nbscore {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view timeIsOver = "the run takes more time than --max-time allows";
constexpr Clock::rep noDeadline = std::numeric_limits<Clock::rep>::max();

// A signal handler reaches nothing but objects of the whole program.
std::atomic<int> requestedSignal{0};
std::atomic<int> requests{0};
std::atomic<bool> endsProcess{false};
std::atomic<bool> hasUnfinishedOutput{false};
std::atomic<bool> isCommitted{false};
std::atomic<bool> isEnding{false};
/// In ticks of the clock.
std::atomic<Clock::rep> deadline{noDeadline};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "a signal handler may touch nothing else");

bool IsTimeOver() {
    return deadline != noDeadline && Clock::now().time_since_epoch().count() >= deadline;
}

#if !defined(_WIN32)

/// A byte in this pipe ends a wait for input, also when the signal came just before the wait began.
std::array<int, 2> wakePipe = {-1, -1};
/// Comes when the time of the run is over, and again some time behind each request to stop.
timer_t alarmClock;
std::atomic<bool> hasAlarmClock{false};
/// Whether a request to stop, or the end of the run's time, was noted.
std::atomic<bool> isStopNoted{false};
/// A temporary file whose path a signal's handler can read.
struct TemporaryFile {
    std::array<char, 4096> path;
    std::atomic<bool> isThere{false};

    void Set(const std::filesystem::path& file) {
        const std::string& name = file.native();
        if (name.empty() || name.size() >= path.size()) return;
        path[name.copy(path.data(), name.size())] = '\0';
        isThere = true;
    }
};
TemporaryFile temporaryFile;
TemporaryFile furtherTemporaryFile;

constexpr std::array stopSignals = {SIGINT, SIGTERM, SIGHUP, SIGXCPU};
std::array<struct sigaction, stopSignals.size()> earlierActions;

/// Sent where a write fails, of which the failure itself tells.
constexpr std::array writeSignals = {SIGPIPE, SIGXFSZ};
std::array<struct sigaction, writeSignals.size()> earlierWriteActions;
struct sigaction earlierAlarmAction;

#endif

void Say(std::string_view text) {
#if defined(_WIN32)
    [[maybe_unused]] const int written = _write(2, text.data(), static_cast<unsigned>(text.size()));
#else
    [[maybe_unused]] const ssize_t written = write(2, text.data(), text.size());
#endif
}

/// Calls nothing that a signal handler may not call. Returns only when another call of it is at work.
void EndProcess() {
    if (isEnding.exchange(true)) return;
    const int signal = requestedSignal;
#if !defined(_WIN32)
    // A file that is not there any more has got its own name already.
    if (temporaryFile.isThere && unlink(temporaryFile.path.data()) != 0 && errno == ENOENT) isCommitted = true;
    if (furtherTemporaryFile.isThere) unlink(furtherTemporaryFile.path.data());
#endif
    if (isCommitted) std::_Exit(static_cast<int>(ExitStatus::Fine));
    if (signal != 0) {
        Say("interrupted\n");
        std::_Exit(GetExitStatusOfSignal(signal));
    }
    Say("error: ");
    Say(timeIsOver);
    Say("\n");
    std::_Exit(static_cast<int>(ExitStatus::TimeIsOver));
}

#if !defined(_WIN32)

/// No time puts it off.
void SetAlarm(std::chrono::nanoseconds time) {
    constexpr std::int64_t second = 1'000'000'000;
    itimerspec spec = {};
    spec.it_value.tv_sec = static_cast<std::time_t>(time.count() / second);
    spec.it_value.tv_nsec = static_cast<long>(time.count() % second);
    if (hasAlarmClock) timer_settime(alarmClock, 0, &spec, nullptr);
}

void NoteStop() {
    if (endsProcess && !hasUnfinishedOutput) EndProcess();
    constexpr std::chrono::milliseconds timeToHear{100};
    if (!isStopNoted.exchange(true)) SetAlarm(timeToHear);
    [[maybe_unused]] const auto written = write(wakePipe[1], "", 1);
}

extern "C" void NoteRequest(int signal) {
    const int errorBefore = errno;
    requestedSignal = signal;
    if (++requests >= 2) static_cast<void>(std::signal(signal, SIG_DFL));
    NoteStop();
    errno = errorBefore;
}

extern "C" void NoteAlarm(int) {
    const int errorBefore = errno;
    if (isStopNoted && endsProcess) EndProcess();
    NoteStop();
    errno = errorBefore;
}

void InstallHandlers() {
    if (pipe(wakePipe.data()) != 0) throw InputOutputError("cannot make a pipe: " + GetSystemReason(errno));
    for (const int end : wakePipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    struct sigaction action = {};
    action.sa_handler = NoteRequest;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < stopSignals.size(); ++i) {
        sigaction(stopSignals[i], nullptr, &earlierActions[i]);
        if (earlierActions[i].sa_handler != SIG_IGN) sigaction(stopSignals[i], &action, nullptr);
    }
    action.sa_handler = SIG_IGN;
    for (std::size_t i = 0; i < writeSignals.size(); ++i)
        sigaction(writeSignals[i], &action, &earlierWriteActions[i]);
    action.sa_handler = NoteAlarm;
    sigaction(SIGALRM, &action, &earlierAlarmAction);
    isStopNoted = false;
    // Without one, waits end by the clock when the run's time is over.
    hasAlarmClock = timer_create(CLOCK_MONOTONIC, nullptr, &alarmClock) == 0;
}

void RestoreHandlers() {
    if (hasAlarmClock.exchange(false)) timer_delete(alarmClock);
    sigaction(SIGALRM, &earlierAlarmAction, nullptr);
    for (std::size_t i = 0; i < stopSignals.size(); ++i)
        sigaction(stopSignals[i], &earlierActions[i], nullptr);
    for (std::size_t i = 0; i < writeSignals.size(); ++i)
        sigaction(writeSignals[i], &earlierWriteActions[i], nullptr);
    for (int& end : wakePipe) {
        close(end);
        end = -1;
    }
}

/// Until the deadline, rounded up; -1 where there is none.
int MillisecondsLeft() {
    if (deadline == noDeadline) return -1;
    const auto left = Clock::duration(deadline) - Clock::now().time_since_epoch();
    const std::int64_t milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
    return static_cast<int>(std::clamp<std::int64_t>(milliseconds, 0, std::numeric_limits<int>::max()));
}

constexpr short readable = POLLIN;
constexpr short writable = POLLOUT;

void Wait(int descriptor, short event) {
    // Without handlers the pipe's end is -1, which poll ignores.
    std::array<pollfd, 2> waited = {{{descriptor, event, 0}, {wakePipe[0], POLLIN, 0}}};
    int ready = 0;
    do {
        Interrupts::ThrowIfRequested();
        ready = poll(waited.data(), waited.size(), MillisecondsLeft());
    } while (ready == 0 || (ready < 0 && errno == EINTR));
}

#else

void SetAlarm(std::chrono::nanoseconds) {}

/// On a thread of its own.
extern "C" void NoteRequest(int signal) {
    requestedSignal = signal;
    if (++requests < 2) std::signal(signal, NoteRequest);
    if (endsProcess && !hasUnfinishedOutput) EndProcess();
}

void InstallHandlers() {
    std::signal(SIGINT, NoteRequest);
    std::signal(SIGTERM, NoteRequest);
}

void RestoreHandlers() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

constexpr short readable = 0;
constexpr short writable = 0;

void Wait(int, short) {}

#endif

}  // namespace

Interrupts::Interrupts(WithNothingToCleanUp manner) {
    requestedSignal = 0;
    requests = 0;
    endsProcess = manner == WithNothingToCleanUp::EndProcess;
    isCommitted = false;
    InstallHandlers();
}

Interrupts::~Interrupts() {
    RestoreHandlers();
    endsProcess = false;
    requestedSignal = 0;
}

bool Interrupts::AreRequested() {
    return requestedSignal != 0 || IsTimeOver();
}

void Interrupts::ThrowIfRequested() {
    if (AreRequested()) ThrowReason();
}

void Interrupts::ThrowReason() {
    const int signal = requestedSignal;
    if (signal != 0) throw InterruptedError(signal);
    throw TimeLimitError(std::string(timeIsOver));
}

void Interrupts::WaitUntilReadable(int descriptor) {
    ThrowIfRequested();
    Wait(descriptor, readable);
    ThrowIfRequested();
}

void Interrupts::WaitUntilWritable(int descriptor) {
    ThrowIfRequested();
    Wait(descriptor, writable);
    ThrowIfRequested();
}

TimeLimit::TimeLimit(std::optional<std::chrono::duration<double>> time) {
    const Clock::time_point now = Clock::now();
    // What the clock cannot count is for ever.
    if (!time || *time >= Clock::time_point::max() - now) return;
    const auto ticks = std::chrono::ceil<Clock::duration>(*time);
    deadline = (now + ticks).time_since_epoch().count();
    SetAlarm(ticks);
}

TimeLimit::~TimeLimit() {
    if (deadline.exchange(noDeadline) != noDeadline) SetAlarm({});
}

UnfinishedOutput::UnfinishedOutput() {
    hasUnfinishedOutput = true;
}

UnfinishedOutput::~UnfinishedOutput() {
#if !defined(_WIN32)
    temporaryFile.isThere = false;
    furtherTemporaryFile.isThere = false;
#endif
    hasUnfinishedOutput = false;
    if (endsProcess && Interrupts::AreRequested()) EndProcess();
}

void UnfinishedOutput::SetTemporaryFile([[maybe_unused]] const std::filesystem::path& path) {
#if !defined(_WIN32)
    temporaryFile.Set(path);
#endif
}

void UnfinishedOutput::SetFurtherTemporaryFile([[maybe_unused]] const std::filesystem::path& path) {
#if !defined(_WIN32)
    furtherTemporaryFile.Set(path);
#endif
}

void UnfinishedOutput::NoteCommitted() {
    isCommitted = true;
}

}  // namespace nbscore
