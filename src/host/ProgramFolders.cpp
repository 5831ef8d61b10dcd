#include "host/ProgramFolders.h"

#include "output/HostError.h"

#ifdef _WIN32
#include <windows.h>

#include <string>
#else
#include <dlfcn.h>

#include <system_error>
#endif

#include "framework/NumberText.h"

namespace nbscore {

#ifdef _WIN32

namespace {

std::optional<std::filesystem::path> GetFolderOf(HMODULE module) {
    constexpr DWORD longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    const DWORD length = GetModuleFileNameW(module, path.data(), longestPath);
    if (length == 0 || length == longestPath) return std::nullopt;
    path.resize(length);
    return std::filesystem::path(path).parent_path();
}

}  // namespace

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
