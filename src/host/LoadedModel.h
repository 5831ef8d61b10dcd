#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "framework/ScoreModel.h"
#include "framework/ScoringRule.h"
#include "framework/VeskException.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"
#include "reading/BaseTranslator.h"

namespace nbscore {

/// Who hears what reading a document finds, beside the model or the refusal.
struct ReadingListeners {
    /// Gets the plug-in's remarks, where its translator is a BaseTranslator: each as one line, and with the document's
    /// name in its place.
    BaseTranslator::Notices onNotice;
    /// Gets all faults of a refused document, in its order, before the first of them is thrown; where the plug-in knows
    /// only that one (DocumentFaults), that one. With this the plug-in goes on reading behind a fault.
    std::function<void(const VeskException&)> onFault;
};

/// `smoothed` or `standard`, as the command's option has it.
const char* NameRule(ScoringRule rule);
ScoringRule OtherThan(ScoringRule rule);

/// A model and the plug-in that it came from, which stays loaded as long as the model lives.
class LoadedModel {
public:
    /// Reads a document with a plug-in. Throws VeskException when the document is refused (by value, also where
    /// the plug-in throws a pointer), InputOutputError when its file cannot be read, and CancelledError.
    /// @param rule by which the model scores. InputOutputError, too, where the plug-in lacks it.
    /// @param limits for a plug-in whose translator is a BaseTranslator; any other one ignores them.
    static LoadedModel Read(std::shared_ptr<PluginLibrary> plugin, const std::filesystem::path& document,
                            ScoringRule rule = ScoringRule::Smoothed, const Limits& limits = {});

    /// Reads a document that was parsed already, under its own limits. Throws as above.
    static LoadedModel Read(std::shared_ptr<PluginLibrary> plugin, const SourceDocument& document,
                            ScoringRule rule = ScoringRule::Smoothed, const ReadingListeners& listeners = {});

    /// Whether a parsed document can be scored by a rule, found by reading it. False also where the plug-in lacks the
    /// rule. Throws CancelledError, and InputOutputError where the plug-in fails.
    static bool CanScore(std::shared_ptr<PluginLibrary> plugin, const SourceDocument& document, ScoringRule rule);

    /// Takes a model over.
    /// @param owner the plug-in that made it; null for a model whose code is part of the program.
    LoadedModel(std::shared_ptr<PluginLibrary> owner, std::unique_ptr<ScoreModel> readModel)
        : plugin(std::move(owner)), model(std::move(readModel)) {}
    LoadedModel(LoadedModel&&) = default;
    /// Would unload the old plug-in before deleting the old model.
    LoadedModel& operator=(LoadedModel&&) = delete;

    ScoreModel& Get() const { return *model; }

    /// Throws UnscorableModelError when scoring would stop the process: no target (of a set of sub-models, which may
    /// be empty, the model itself must say so), a target without declared values or with one declared twice, more
    /// than one target, or whatever the model itself finds wrong.
    void RequireScorable() const;

private:
    std::shared_ptr<PluginLibrary> plugin;  // declared first, so that it is destroyed last
    std::unique_ptr<ScoreModel> model;
};

}  // namespace nbscore
