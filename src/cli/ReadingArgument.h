#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "host/PluginLibrary.h"

namespace nbscore {

/// The options about reading documents, --adapt and --plugin, the same in every verb that reads one.
class ReadingArgument {
public:
    void Declare(CLI::App& app);

    bool IsAdapting() const { return adapt; }
    /// The plug-in that was asked for, or else the bundled one.
    std::shared_ptr<PluginLibrary> LoadPlugin() const;

private:
    std::string plugin;
    bool adapt = false;
};

}  // namespace nbscore
