#pragma once

#include <memory>
#include <string>

#include "framework/ScoreTranslator.h"

namespace nbscore::test {

/// The built plug-in, loaded at run time as hosts load it; unloaded at the end of its life.
///
/// Whatever was made by it must be gone by then.
class LoadedPlugin {
public:
    LoadedPlugin();
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    /// What the plug-in's factory gives.
    std::unique_ptr<ScoreTranslator> MakeTranslator() const;
    /// Whether the library has a symbol of exactly this name.
    bool HasSymbol(const std::string& name) const;

    /// Whether the plug-in is in this process at present.
    static bool IsInProcess();

private:
    void* FindSymbol(const std::string& name) const;

    void* library = nullptr;
};

}  // namespace nbscore::test
