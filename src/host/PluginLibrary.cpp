#include "host/PluginLibrary.h"

#include <system_error>
#include <vector>

#include "host/SharedObject.h"
#include "output/HostError.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

constexpr const char* factoryName = "GiveMyTranslator";
#ifdef _WIN32
constexpr const char* bundledFileName = "naivebayes.dll";
#else
constexpr const char* bundledFileName = "libnaivebayes.so";
#endif

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& path)
    : library(std::make_unique<SharedObject>(path)),
      pathText(ToUtf8(path)),
      factory(reinterpret_cast<Factory>(library->Find(factoryName))) {
    if (factory == nullptr) {
        throw InputOutputError(pathText + " is no plug-in: it exports no function " + factoryName);
    }
}

PluginLibrary::~PluginLibrary() = default;

std::shared_ptr<PluginLibrary> PluginLibrary::Load(const std::filesystem::path& path) {
    return std::shared_ptr<PluginLibrary>(new PluginLibrary(path));
}

std::filesystem::path PluginLibrary::FindBundled() {
    const std::filesystem::path programFolder = GetExecutableFolder();
    // The third one is where an installation puts libraries, which may be a folder per processor architecture.
    std::vector<std::filesystem::path> folders = {programFolder, programFolder / "../lib",
                                                  programFolder / NBSCORE_LIBDIR_FROM_BINDIR};
    // A program of somebody else's stands elsewhere; the framework that it links is installed beside the plug-in.
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

std::unique_ptr<ScoreTranslator> PluginLibrary::MakeTranslator() const {
    std::unique_ptr<ScoreTranslator> translator(factory());
    if (!translator) throw InputOutputError(pathText + " gives no translator");
    return translator;
}

}  // namespace nbscore
