#pragma once

#include <memory>
#include <string>

#include "framework/ScoreTranslator.h"
#include "framework/ScoringRule.h"

namespace nbscore::test {

/// The built plug-in, loaded at run time as hosts do, and unloaded by the destructor.
///
/// Everything that it made must be destroyed by then.
class LoadedPlugin {
public:
    LoadedPlugin();
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    /// The translator that the plug-in's factory for this rule makes.
    std::unique_ptr<ScoreTranslator> MakeTranslator(ScoringRule rule = ScoringRule::Smoothed) const;
    /// Whether the library has a symbol of exactly this name.
    bool HasSymbol(const std::string& name) const;

    /// Whether this process has the plug-in loaded now.
    static bool IsInProcess();

private:
    void* FindSymbol(const std::string& name) const;

    void* library = nullptr;
};

}  // namespace nbscore::test
