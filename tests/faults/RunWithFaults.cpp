// Runs a program while its input and output go wrong: RunWithFaults [FAULT]... -- PROGRAM [ARGUMENT]...
//
//   bytewise                each read and write transfers one byte
//   interrupted             half of the reads, writes and waits are interrupted by a signal
//   CALL:NAME:AFTER:ERRNO   CALL (read, write, start-sync, sync, close, rename) fails with this error for files whose
//                           names begin with NAME, once AFTER bytes were transferred; "./" is the folder itself
//
// The faults are injected where the program calls the system, so that calls inside the C library are reached, too.
// They affect the files of the folder that it runs in and its standard streams; standard error is only written byte by
// byte. Exits with the status of the program, or with 125 when it cannot be traced.

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int cannotWatch = 125;

enum class Call { Other, Read, Write, Wait, StartSync, Sync, Close, Rename };

Call CallOf(unsigned long long number) {
    switch (number) {
        case SYS_read:
            return Call::Read;
        case SYS_write:
            return Call::Write;
        case SYS_poll:
            return Call::Wait;
        case SYS_sync_file_range:
            return Call::StartSync;
        case SYS_fsync:
            return Call::Sync;
        case SYS_close:
            return Call::Close;
        case SYS_rename:
        case SYS_renameat:
        case SYS_renameat2:
            return Call::Rename;
        default:
            return Call::Other;
    }
}

Call CallNamed(const std::string& name) {
    if (name == "read") return Call::Read;
    if (name == "write") return Call::Write;
    if (name == "start-sync") return Call::StartSync;
    if (name == "sync") return Call::Sync;
    if (name == "close") return Call::Close;
    return name == "rename" ? Call::Rename : Call::Other;
}

struct Failure {
    Call call = Call::Other;
    std::string name;
    std::uint64_t after = 0;
    int error = 0;
    std::uint64_t transferred = 0;
};

struct Faults {
    bool areBytewise = false;
    bool areInterrupted = false;
    std::optional<Failure> failure;
};

std::optional<Failure> ReadFailure(const std::string& text) {
    std::istringstream parts(text);
    std::string call;
    Failure failure;
    char colon = 0;
    if (!std::getline(parts, call, ':') || !std::getline(parts, failure.name, ':')) return std::nullopt;
    if (!(parts >> failure.after >> colon >> failure.error)) return std::nullopt;
    failure.call = CallNamed(call);
    return failure.call == Call::Other ? std::nullopt : std::optional(failure);
}

/// Traces one program, which stops before and after each system call.
class Watch {
public:
    Watch(pid_t watched, const Faults& wanted)
        : process(watched), faults(wanted), folder(std::filesystem::current_path().string() + '/') {}

    /// Until it ends. Returns its exit status, or 128 plus the number of the signal that killed it.
    int Run() {
        int signal = 0;
        bool isBefore = true;
        while (ptrace(PTRACE_SYSCALL, process, nullptr, signal) == 0) {
            int status = 0;
            waitpid(process, &status, 0);
            if (WIFEXITED(status)) return WEXITSTATUS(status);
            if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
            const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
            // The start of the program shows as a trap of its own.
            signal = isCall || WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
            if (!isCall) continue;
            isBefore ? Before() : Behind();
            isBefore = !isBefore;
        }
        return cannotWatch;
    }

private:
    /// The name of a descriptor's file, seen from the folder that the program runs in; "standard" for a standard
    /// stream; empty for anything else.
    std::string NameOf(unsigned long long descriptor) const {
        if (descriptor <= 2) return "standard";
        std::error_code isClosed;
        const std::string path = std::filesystem::read_symlink(
            "/proc/" + std::to_string(process) + "/fd/" + std::to_string(descriptor), isClosed);
        if (path + '/' == folder) return "./";
        return path.starts_with(folder) ? path.substr(folder.size()) : std::string();
    }

    void Before() {
        user_regs_struct registers = {};
        ptrace(PTRACE_GETREGS, process, nullptr, &registers);
        call = CallOf(registers.orig_rax);
        error = 0;
        isCounted = false;
        if (call == Call::Other) return;
        const bool hasDescriptor = call != Call::Wait && call != Call::Rename;
        const std::string name = hasDescriptor ? NameOf(registers.rdi) : std::string();
        if (hasDescriptor && name.empty()) return;
        const bool isForMessages = hasDescriptor && registers.rdi == 2;
        const bool isTransfer = call == Call::Read || call == Call::Write;
        if (faults.areInterrupted && (isTransfer || call == Call::Wait) && !isForMessages) {
            // At random, because otherwise of calls that alternate the same one would always be interrupted.
            if (std::bernoulli_distribution()(random)) error = EINTR;
        }
        if (faults.areBytewise && isTransfer) registers.rdx = std::min(registers.rdx, 1ULL);
        if (faults.failure && faults.failure->call == call && !isForMessages) LetFail(*faults.failure, name, registers);
        if (error != 0) registers.orig_rax = ~0ULL;  // no call at all
        ptrace(PTRACE_SETREGS, process, nullptr, &registers);
    }

    void LetFail(const Failure& failure, const std::string& name, user_regs_struct& registers) {
        if (!name.starts_with(failure.name) && call != Call::Rename) return;
        const std::uint64_t left = failure.after - failure.transferred;
        if (left == 0) {
            error = failure.error;
        } else {
            isCounted = true;
            registers.rdx = std::min<unsigned long long>(registers.rdx, left);
        }
    }

    void Behind() {
        if (error == 0 && !isCounted) return;
        user_regs_struct registers = {};
        ptrace(PTRACE_GETREGS, process, nullptr, &registers);
        if (error == 0) {
            const auto transferred = static_cast<std::int64_t>(registers.rax);
            if (transferred > 0) faults.failure->transferred += static_cast<std::uint64_t>(transferred);
            return;
        }
        registers.rax = static_cast<unsigned long long>(-error);
        ptrace(PTRACE_SETREGS, process, nullptr, &registers);
    }

    pid_t process;
    Faults faults;
    std::string folder;
    Call call = Call::Other;
    /// The error that the current call is to fail with; 0 for none.
    int error = 0;
    bool isCounted = false;
    std::mt19937 random{1};
};

[[noreturn]] void Become(char** command) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(cannotWatch);
    std::raise(SIGSTOP);
    execv(command[0], command);
    _exit(127);
}

}  // namespace

int main(int argc, char** argv) {
    Faults faults;
    int next = 1;
    for (; next < argc && std::string(argv[next]) != "--"; ++next) {
        const std::string text = argv[next];
        if (text == "bytewise") {
            faults.areBytewise = true;
        } else if (text == "interrupted") {
            faults.areInterrupted = true;
        } else if (faults.failure = ReadFailure(text); !faults.failure) {
            std::cerr << "no fault: " << text << '\n';
            return cannotWatch;
        }
    }
    if (next + 1 >= argc) return cannotWatch;
    const pid_t process = fork();
    if (process == 0) Become(argv + next + 1);
    int status = 0;
    if (process < 0 || waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) return cannotWatch;
    if (ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) != 0) return cannotWatch;
    return Watch(process, faults).Run();
}
