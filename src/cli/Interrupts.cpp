#include "cli/Interrupts.h"

#include <atomic>
#include <csignal>

#include "host/HostError.h"

#if !defined(_WIN32)
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "host/SystemReason.h"
#endif

namespace nbscore {

namespace {

// A signal handler reaches nothing but objects of the whole program.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<int> requestedSignal{0};
std::atomic<int> requests{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch nothing else");

#if !defined(_WIN32)

/// A byte in this pipe ends a wait for input, also when the signal came just before the wait began.
std::array<int, 2> wakePipe = {-1, -1};

constexpr std::array stopSignals = {SIGINT, SIGTERM, SIGHUP, SIGXCPU};
std::array<struct sigaction, stopSignals.size()> earlierActions;

/// Sent where a write fails, of which the failure itself tells.
constexpr std::array writeSignals = {SIGPIPE, SIGXFSZ};
std::array<struct sigaction, writeSignals.size()> earlierWriteActions;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

extern "C" void NoteRequest(int signal) {
    const int errorBefore = errno;
    requestedSignal = signal;
    if (++requests >= 2) static_cast<void>(std::signal(signal, SIG_DFL));
    [[maybe_unused]] const auto written = write(wakePipe[1], "", 1);
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
}

void RestoreHandlers() {
    for (std::size_t i = 0; i < stopSignals.size(); ++i)
        sigaction(stopSignals[i], &earlierActions[i], nullptr);
    for (std::size_t i = 0; i < writeSignals.size(); ++i)
        sigaction(writeSignals[i], &earlierWriteActions[i], nullptr);
    for (int& end : wakePipe) {
        close(end);
        end = -1;
    }
}

constexpr short readable = POLLIN;
constexpr short writable = POLLOUT;

void Wait(int descriptor, short event) {
    // Without handlers the pipe's end is -1, which poll passes over.
    std::array<pollfd, 2> waited = {{{descriptor, event, 0}, {wakePipe[0], POLLIN, 0}}};
    while (poll(waited.data(), waited.size(), -1) < 0 && errno == EINTR)
        Interrupts::ThrowIfRequested();
}

#else

extern "C" void NoteRequest(int signal) {
    requestedSignal = signal;
    if (++requests < 2) std::signal(signal, NoteRequest);
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

Interrupts::Interrupts() {
    requestedSignal = 0;
    requests = 0;
    InstallHandlers();
}

Interrupts::~Interrupts() {
    RestoreHandlers();
    requestedSignal = 0;
}

void Interrupts::ThrowIfRequested() {
    const int signal = requestedSignal;
    if (signal != 0) throw InterruptedError(signal);
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

}  // namespace nbscore
