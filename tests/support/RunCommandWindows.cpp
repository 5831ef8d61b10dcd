#include <windows.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "support/RunCommand.h"

namespace nbscore::test {

namespace {

void Require(bool isDone, const char* what) {
    if (!isDone) throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

/// Closes what it holds, a file, an end of a pipe or a process.
class Handle {
public:
    explicit Handle(HANDLE owned = nullptr) : handle(owned) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE Get() const { return handle; }
    HANDLE* Fill() { return &handle; }
    void Reset(HANDLE owned) {
        Close();
        handle = owned;
    }
    void Close() {
        if (handle != nullptr && handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = nullptr;
    }

private:
    HANDLE handle;
};

std::wstring Widen(std::string_view text) {
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
    return wide;
}

/// An argument in the form that the C library of the program takes apart again: a quotation mark in it has a backslash
/// before it, and so has every backslash before one.
std::wstring Quote(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

std::wstring MakeCommandLine(const CommandCall& call) {
    std::wstring line = Quote(call.program.wstring());
    for (const std::string& argument : call.arguments)
        line += L' ' + Quote(Widen(argument));
    return line;
}

/// This process's environment with what the call sets, as one text of texts that end with a zero.
std::wstring MakeEnvironment(const CommandCall& call) {
    std::wstring environment;
    for (const auto& [name, value] : call.environment)
        environment += Widen(name + '=' + value) + L'\0';
    wchar_t* const inherited = GetEnvironmentStringsW();
    for (const wchar_t* entry = inherited; *entry != L'\0'; entry += std::wstring_view(entry).size() + 1) {
        const auto isSet = [entry](const auto& set) {
            return std::wstring_view(entry).starts_with(Widen(set.first) + L'=');
        };
        if (std::none_of(call.environment.begin(), call.environment.end(), isSet))
            environment += std::wstring(entry) + L'\0';
    }
    FreeEnvironmentStringsW(inherited);
    return environment + L'\0';
}

SECURITY_ATTRIBUTES MakeInheritable() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

/// A file that is deleted when it is closed. Output is captured in files, not in pipes, which would have to be read
/// meanwhile.
HANDLE OpenPassingFile() {
    std::array<wchar_t, MAX_PATH> name;
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    Require(GetTempFileNameW(folder.c_str(), L"nbs", 0, name.data()) != 0, "GetTempFileName");
    SECURITY_ATTRIBUTES inheritable = MakeInheritable();
    const HANDLE file = CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    &inheritable, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    Require(file != INVALID_HANDLE_VALUE, "CreateFile");
    return file;
}

void OpenPipe(Handle& readingEnd, Handle& writingEnd) {
    SECURITY_ATTRIBUTES inheritable = MakeInheritable();
    Require(CreatePipe(readingEnd.Fill(), writingEnd.Fill(), &inheritable, 0) != 0, "CreatePipe");
}

HANDLE OpenOutput(const CommandCall& call) {
    if (call.outputPath) {
        SECURITY_ATTRIBUTES inheritable = MakeInheritable();
        const HANDLE file = CreateFileW(call.outputPath->c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        &inheritable, OPEN_EXISTING, 0, nullptr);
        Require(file != INVALID_HANDLE_VALUE, "CreateFile");
        return file;
    }
    if (!call.outputIsClosedPipe) return OpenPassingFile();
    Handle readingEnd;
    Handle writingEnd;
    OpenPipe(readingEnd, writingEnd);
    return std::exchange(*writingEnd.Fill(), nullptr);
}

std::string ReadAll(HANDLE file) {
    std::string text;
    std::array<char, 65536> piece;
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    DWORD count = 0;
    while (ReadFile(file, piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr) != 0 && count > 0)
        text.append(piece.data(), count);
    return text;
}

}  // namespace

struct StartedCommand::Process {
    Handle process;
    Handle inputEnd;
    Handle out;
    Handle err;
    DWORD millisecondsUntilKilled = 0;
    bool isStarted = false;
};

CommandResult RunCommand(const CommandCall& call) {
    StartedCommand started(call);
    started.CloseInput();
    return started.Wait();
}

StartedCommand::StartedCommand(const CommandCall& call) : running(std::make_unique<Process>()) {
    Handle input;
    OpenPipe(input, running->inputEnd);
    SetHandleInformation(running->inputEnd.Get(), HANDLE_FLAG_INHERIT, 0);
    running->out.Reset(OpenOutput(call));
    running->err.Reset(OpenPassingFile());
    running->millisecondsUntilKilled = call.secondsUntilKilled * 1000;

    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.Get();
    start.hStdOutput = call.outputIsMissing ? nullptr : running->out.Get();
    start.hStdError = running->err.Get();
    std::wstring line = MakeCommandLine(call);
    std::wstring environment = MakeEnvironment(call);
    PROCESS_INFORMATION started = {};
    const std::wstring program = call.program.wstring();
    const wchar_t* const folder = call.workingFolder.empty() ? nullptr : call.workingFolder.c_str();
    running->isStarted = CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                                        CREATE_UNICODE_ENVIRONMENT, environment.data(), folder, &start, &started) != 0;
    if (!running->isStarted) return;
    running->process.Reset(started.hProcess);
    const Handle thread(started.hThread);
    input.Close();
    WriteInput(call.standardInput);
}

StartedCommand::~StartedCommand() {
    CloseInput();
    if (running->process.Get() != nullptr) Kill();
}

void StartedCommand::WriteInput(std::string_view text) {
    while (!text.empty()) {
        DWORD count = 0;
        if (WriteFile(running->inputEnd.Get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr) == 0)
            return;
        text.remove_prefix(count);
    }
}

void StartedCommand::CloseInput() {
    running->inputEnd.Close();
}

void StartedCommand::Kill() {
    constexpr UINT asASignalWould = static_cast<UINT>(-9);
    TerminateProcess(running->process.Get(), asASignalWould);
}

CommandResult StartedCommand::Wait() {
    CommandResult result;
    if (!running->isStarted) {
        result.exitStatus = 127;
        return result;
    }
    if (WaitForSingleObject(running->process.Get(), running->millisecondsUntilKilled) == WAIT_TIMEOUT) {
        Kill();
        WaitForSingleObject(running->process.Get(), INFINITE);
    }
    DWORD status = 0;
    Require(GetExitCodeProcess(running->process.Get(), &status) != 0, "GetExitCodeProcess");
    running->process.Close();
    // When the system ends a process, the status has the highest bit set and so is below zero, too.
    result.exitStatus = static_cast<int>(status);
    result.out = ReadAll(running->out.Get());
    result.err = ReadAll(running->err.Get());
    return result;
}

}  // namespace nbscore::test
