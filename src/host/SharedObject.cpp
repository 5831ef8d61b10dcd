#include "host/SharedObject.h"

#include <string>

#include "output/HostError.h"
#include "output/PathText.h"

#ifdef _WIN32
#include <windows.h>

#include <system_error>
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

}  // namespace nbscore
