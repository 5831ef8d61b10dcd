#include "LoadedPlugin.h"

#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace nbscore::test {

namespace {

constexpr const char* pluginPath = NBSCORE_PLUGIN_PATH;

#if defined(_WIN32)
void* Load() {
    return LoadLibraryA(pluginPath);
}
void Unload(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}
void* Find(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
#else
void* Load() {
    return dlopen(pluginPath, RTLD_NOW | RTLD_LOCAL);
}
void Unload(void* library) {
    dlclose(library);
}
void* Find(void* library, const char* name) {
    return dlsym(library, name);
}
#endif

}  // namespace

LoadedPlugin::LoadedPlugin() : library(Load()) {
    if (library == nullptr) throw std::runtime_error(std::string("cannot load ") + pluginPath);
}

LoadedPlugin::~LoadedPlugin() {
    Unload(library);
}

void* LoadedPlugin::FindSymbol(const std::string& name) const {
    return Find(library, name.c_str());
}

bool LoadedPlugin::HasSymbol(const std::string& name) const {
    return FindSymbol(name) != nullptr;
}

std::unique_ptr<ScoreTranslator> LoadedPlugin::MakeTranslator(ScoringRule rule) const {
    using Factory = ScoreTranslator* (*)();
    const std::string name = rule == ScoringRule::Standard ? "GiveMyStandardTranslator" : "GiveMyTranslator";
    const auto factory = reinterpret_cast<Factory>(FindSymbol(name));
    if (factory == nullptr) throw std::runtime_error("the plug-in has no " + name);
    return std::unique_ptr<ScoreTranslator>(factory());
}

bool LoadedPlugin::IsInProcess() {
#if defined(_WIN32)
    return GetModuleHandleA(pluginPath) != nullptr;
#else
    void* present = dlopen(pluginPath, RTLD_NOW | RTLD_NOLOAD);
    if (present != nullptr) dlclose(present);
    return present != nullptr;
#endif
}

}  // namespace nbscore::test
