#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "cli/system/Console.h"
#include "framework/Limits.h"
#include "host/LoadedModel.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"

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
    /// With them everything that reads, checks or scores notices a request to stop (Interrupts).
    const Limits& GetLimits() const { return limits; }

private:
    void DeclareLimits(CLI::App& app);

    std::optional<std::chrono::duration<double>> maxTime;
    Limits limits;
    std::string plugin;
    bool adapt = false;
};

/// The MODEL argument and the options about reading it, the same in every verb that reads a model.
class ModelArgument {
public:
    void DeclareDocument(CLI::App& app);
    /// --adapt and --plugin.
    void DeclareReading(CLI::App& app);

    /// Parses the document, and adapts it when that was asked for.
    /// @param quiet otherwise each change is reported on the console.
    SourceDocument Parse(Console& console, bool quiet = false) const;
    /// Reads a parsed document with the plug-in that was asked for, or else the bundled one. Warns of a document whose
    /// answers would be far from what it means.
    /// @param quiet otherwise the plug-in's remarks are reported on the console.
    LoadedModel Read(const SourceDocument& source, Console& console, bool quiet = false) const;
    /// Both in one.
    LoadedModel Read(Console& console, bool quiet = false) const;
    const std::string& GetDocumentName() const { return document; }
    const ReadingArgument& GetReading() const { return reading; }

private:
    std::string document;
    ReadingArgument reading;
};

}  // namespace nbscore
