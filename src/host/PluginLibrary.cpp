#include "host/PluginLibrary.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

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

constexpr const char* factoryName = "GiveMyTranslator";
constexpr const char* standardFactoryName = "GiveMyStandardTranslator";
#ifdef _WIN32

constexpr const char* bundledFileName = "naivebayes.dll";

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

/// The folder of the running program's file. Throws InputOutputError when the system does not say.
std::filesystem::path GetExecutableFolder() {
    if (const auto folder = GetFolderOf(nullptr)) return *folder;
    throw InputOutputError("cannot find this program's own file");
}

/// The folder from which the framework library was loaded, where the system says.
std::optional<std::filesystem::path> GetFrameworkFolder() {
    // Any function of the framework tells from which file it was loaded.
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ReadNumber), &module) == 0) return std::nullopt;
    return GetFolderOf(module);
}

#else

constexpr const char* bundledFileName = "libnaivebayes.so";

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

/// The folder of the running program's file. Throws InputOutputError when the system does not say.
std::filesystem::path GetExecutableFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) throw InputOutputError("cannot find this program's own file: " + error.message());
    return program.parent_path();
}

/// The folder from which the framework library was loaded, where the system says.
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

}  // namespace

/// A dynamic library, open while this object lives.
class PluginLibrary::SharedObject {
public:
    /// Throws InputOutputError with the system's own reason when the library does not load.
    explicit SharedObject(const std::filesystem::path& path)
        // An absolute path, because a bare file name would be searched for in the system's library folders.
        : handle(Open(std::filesystem::absolute(path))) {
        if (handle == nullptr) throw InputOutputError("cannot load " + ToUtf8(path) + ": " + GetReason());
    }
    ~SharedObject() { Close(handle); }
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;

    /// The address of an exported function; null when the library exports none of that name.
    void* Find(const char* name) const { return FindFunction(handle, name); }

private:
    void* handle;
};

PluginLibrary::PluginLibrary(const std::filesystem::path& path)
    : library(std::make_unique<SharedObject>(path)),
      pathText(ToUtf8(path)),
      factory(reinterpret_cast<Factory>(library->Find(factoryName))),
      standardFactory(reinterpret_cast<Factory>(library->Find(standardFactoryName))) {
    if (factory == nullptr) {
        throw InputOutputError(pathText + " is no plug-in: it exports no function " + factoryName);
    }
}

PluginLibrary::PluginLibrary(Factory linkedFactory, Factory linkedStandardFactory)
    : pathText("this program"), factory(linkedFactory), standardFactory(linkedStandardFactory) {}

PluginLibrary::~PluginLibrary() = default;

std::shared_ptr<PluginLibrary> PluginLibrary::Load(const std::filesystem::path& path) {
    return std::shared_ptr<PluginLibrary>(new PluginLibrary(path));
}

std::shared_ptr<PluginLibrary> PluginLibrary::Linked(Factory factory, Factory standardFactory) {
    return std::shared_ptr<PluginLibrary>(new PluginLibrary(factory, standardFactory));
}

std::filesystem::path PluginLibrary::FindBundled() {
    const std::filesystem::path programFolder = GetExecutableFolder();
    // The third one is where an installation puts libraries, which may be a folder per processor architecture.
    std::vector<std::filesystem::path> folders = {programFolder, programFolder / "../lib",
                                                  programFolder / NBSCORE_LIBDIR_FROM_BINDIR};
    // Another program lies elsewhere; the framework that it links is installed beside the plug-in.
    if (const auto frameworkFolder = GetFrameworkFolder()) folders.push_back(*frameworkFolder);
    return FindBundled(folders);
}

std::filesystem::path PluginLibrary::FindBundled(const std::vector<std::filesystem::path>& folders) {
    std::string tried;
    for (const std::filesystem::path& folder : folders) {
        std::filesystem::path candidate = (folder / bundledFileName).lexically_normal();
        std::error_code error;
        if (std::filesystem::is_regular_file(candidate, error)) return candidate;
        tried += "\n  " + ToUtf8(candidate);
    }
    throw InputOutputError("cannot find this program's plug-in; looked for" + tried);
}

PluginLibrary::Factory PluginLibrary::FactoryOf(ScoringRule rule) const {
    return rule == ScoringRule::Standard ? standardFactory : factory;
}

bool PluginLibrary::Knows(ScoringRule rule) const {
    return FactoryOf(rule) != nullptr;
}

std::unique_ptr<ScoreTranslator> PluginLibrary::MakeTranslator(ScoringRule rule) const {
    if (!Knows(rule)) {
        throw InputOutputError(pathText + " does not know the standard's rule: it exports no function " +
                               standardFactoryName);
    }
    std::unique_ptr<ScoreTranslator> translator(FactoryOf(rule)());
    if (!translator) throw InputOutputError(pathText + " gives no translator");
    return translator;
}

}  // namespace nbscore
