#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreTranslator.h"
#include "framework/ScoringRule.h"

namespace nbscore {

/// A plug-in, known only by its exported factories: GiveMyTranslator, which each has, and GiveMyStandardTranslator
/// where it has the standard's rule too.
///
/// One that is loaded at run time stays loaded while this object lives. Every object that it made must be gone before:
/// LoadedModel takes care of that for models.
class PluginLibrary {
public:
    using Factory = ScoreTranslator* (*)();

    /// Loads a library; throws InputOutputError when it is not there, does not load or exports no factory.
    static std::shared_ptr<PluginLibrary> Load(const std::filesystem::path& path);
    /// The plug-in that comes with this library: beside the program's executable file, or in the library folder next
    /// to the executable's own, or beside the framework library that the program has loaded. Throws InputOutputError,
    /// naming the places tried, when it is in none.
    static std::filesystem::path FindBundled();
    /// The same, looking in the given folders.
    static std::filesystem::path FindBundled(const std::vector<std::filesystem::path>& folders);

    /// A plug-in that is linked into the program, by its factories.
    static std::shared_ptr<PluginLibrary> Linked(Factory factory, Factory standardFactory);

    ~PluginLibrary();

    /// Whether it has a factory for the rule.
    bool Knows(ScoringRule rule) const;
    /// A new translator, which makes models that score by the rule. Throws InputOutputError when the plug-in gives
    /// none.
    std::unique_ptr<ScoreTranslator> MakeTranslator(ScoringRule rule = ScoringRule::Smoothed) const;

private:
    class SharedObject;

    explicit PluginLibrary(const std::filesystem::path& path);
    PluginLibrary(Factory linkedFactory, Factory linkedStandardFactory);
    Factory FactoryOf(ScoringRule rule) const;

    /// Null where it is linked in.
    std::unique_ptr<SharedObject> library;
    std::string pathText;
    Factory factory;
    /// Null where the plug-in lacks the standard's rule.
    Factory standardFactory;
};

}  // namespace nbscore
