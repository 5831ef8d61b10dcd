#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "framework/Limits.h"
#include "host/PluginLibrary.h"

namespace nbscore {

/// The options about reading documents, the same in every verb that reads one: --adapt, --plugin, and what a run may
/// take, --max-time, --max-memory and --max-document-bytes.
class ReadingArgument {
public:
    void Declare(CLI::App& app);

    bool IsAdapting() const { return adapt; }
    /// The plug-in that was asked for, or else the bundled one.
    std::shared_ptr<PluginLibrary> LoadPlugin() const;

    /// How long the whole run may take; nothing without a limit.
    std::optional<std::chrono::duration<double>> GetMaxTime() const { return maxTime; }
    /// With them everything that reads, checks or scores hears a request to stop (Interrupts).
    const Limits& GetLimits() const { return limits; }

private:
    void DeclareLimits(CLI::App& app);

    std::optional<std::chrono::duration<double>> maxTime;
    Limits limits;
    std::string plugin;
    bool adapt = false;
};

}  // namespace nbscore
