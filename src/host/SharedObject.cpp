#include "host/SharedObject.h"

#include <string>
#include <system_error>

#include "framework/NumberText.h"
#include "output/HostError.h"
#include "output/MessageText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace nbscore {
namespace {

#ifdef _WIN32

void* Open(std::filesystem::path path) {
    // What it needs is searched for in its own folder, the program's and the system's; never in the current folder or
    // those of PATH. These flags ask for backslashes.
    constexpr DWORD searched = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    return LoadLibraryExW(path.make_preferred().c_str(), nullptr, searched);
}

std::string GetReason() {
    return std::system_category().message(static_cast<int>(GetLastError()));
}

void* FindFunction(void* handle, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

void Close(void* handle) {
    FreeLibrary(static_cast<HMODULE>(handle));
}

std::optional<std::filesystem::path> GetFolderOf(HMODULE module) {
    constexpr DWORD longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    const DWORD length = GetModuleFileNameW(module, path.data(), longestPath);
    if (length == 0 || length == longestPath) return std::nullopt;
    path.resize(length);
    return std::filesystem::path(path).parent_path();
}

#else

void* Open(const std::filesystem::path& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

std::string GetReason() {
    const char* const reason = dlerror();
    return reason == nullptr ? "unknown reason" : reason;
}

void* FindFunction(void* handle, const char* name) {
    return dlsym(handle, name);
}

void Close(void* handle) {
    dlclose(handle);
}

#endif

}  // namespace

// An absolute path, because a bare file name would be searched for in the system's library folders.
SharedObject::SharedObject(const std::filesystem::path& path) : handle(Open(std::filesystem::absolute(path))) {
    if (handle == nullptr) throw InputOutputError("cannot load " + ToUtf8(path) + ": " + GetReason());
}

SharedObject::~SharedObject() {
    Close(handle);
}

void* SharedObject::Find(const char* name) const {
    return FindFunction(handle, name);
}

#ifdef _WIN32

std::filesystem::path GetExecutableFolder() {
    if (const auto folder = GetFolderOf(nullptr)) return *folder;
    throw InputOutputError("cannot find this program's own file");
}

std::optional<std::filesystem::path> GetFrameworkFolder() {
    // Any function of the framework tells from which file it was loaded.
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ReadNumber), &module) == 0) return std::nullopt;
    return GetFolderOf(module);
}

#else

std::filesystem::path GetExecutableFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) throw InputOutputError("cannot find this program's own file: " + error.message());
    return program.parent_path();
}

std::optional<std::filesystem::path> GetFrameworkFolder() {
    // Any function of the framework tells from which file it was loaded.
    Dl_info module{};
    if (dladdr(reinterpret_cast<const void*>(&ReadNumber), &module) == 0) return std::nullopt;
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(module.dli_fname, error);
    if (error) return std::nullopt;
    return file.parent_path();
}

#endif

}  // namespace nbscore
