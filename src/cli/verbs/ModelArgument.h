#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "cli/system/Console.h"
#include "framework/Limits.h"
#include "framework/ScoringRule.h"
#include "host/LoadedModel.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"

namespace nbscore {

/// The options about reading documents, the same in every verb that reads one: --rule, --adapt, --plugin, and what a
/// run may take, --max-time, --max-memory and --max-document-bytes.
class ReadingArgument {
public:
    void Declare(CLI::App& app);
    /// The same without --adapt, for verbs whose documents need none.
    void DeclareWithoutAdapting(CLI::App& app);

    ScoringRule GetRule() const { return rule.value_or(ScoringRule::Smoothed); }
    bool IsRuleGiven() const { return rule.has_value(); }
    bool IsAdapting() const { return adapt; }
    /// The plug-in that was asked for, or else the bundled one.
    std::shared_ptr<PluginLibrary> LoadPlugin() const;

    /// How long the whole run may take; nothing without a limit.
    std::optional<std::chrono::duration<double>> GetMaxTime() const { return maxTime; }
    /// With them everything that reads, checks or scores notices a request to stop (Interrupts).
    const Limits& GetLimits() const { return limits; }

private:
    void DeclareRule(CLI::App& app);
    void DeclarePlugin(CLI::App& app);
    void DeclareLimits(CLI::App& app);

    std::optional<std::chrono::duration<double>> maxTime;
    Limits limits;
    std::string plugin;
    std::optional<ScoringRule> rule;
    bool adapt = false;
};

/// The MODEL argument and the options about reading it, the same in every verb that reads a model.
class ModelArgument {
public:
    void DeclareDocument(CLI::App& app);
    void DeclareReading(CLI::App& app);
    /// --densities, for verbs that score.
    void DeclareDensities(CLI::App& app);

    /// Parses the document, and adapts it when that was asked for.
    /// @param quiet otherwise each change is reported on the console.
    SourceDocument Parse(Console& console, bool quiet = false) const;
    /// Reads a parsed document with the plug-in that was asked for, or else the bundled one. Warns of a document whose
    /// answers would be far from what it means. The refusal of a document that only the other rule can score advises
    /// that rule.
    /// @param quiet otherwise the plug-in's remarks are reported on the console, and which rule was taken where
    ///     another one would give the answers of the document's producer.
    LoadedModel Read(const SourceDocument& source, Console& console, bool quiet = false) const;
    /// The same for a model that is to score, which it must be able to: --densities applies to it. Throws
    /// UnscorableModelError, or VeskException where the other rule can score it.
    LoadedModel ReadScorable(const SourceDocument& source, Console& console, bool quiet = false) const;
    const std::string& GetDocumentName() const { return document; }
    const ReadingArgument& GetReading() const { return reading; }
    /// What the plug-in says beside its refusals is not reported: for runs whose results programs read.
    void HushPlugin() { isPluginHushed = true; }

private:
    LoadedModel Read(const SourceDocument& source, Console& console, bool quiet, bool mustScore) const;
    void SetDensityFloor(ScoreModel& model) const;

    std::string document;
    ReadingArgument reading;
    std::optional<DensityFloor> densityFloor;
    bool isPluginHushed = false;
};

}  // namespace nbscore
