#include "host/LoadedModel.h"

#include <string>
#include <string_view>
#include <vector>

#include "framework/ModelSelfCheck.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "framework/VeskException.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "reading/BaseTranslator.h"
#include "reading/DocumentFaults.h"

namespace nbscore {
namespace {

/// @param translate what to have a new translator of the plug-in do.
template <typename Translate>
LoadedModel ReadWith(std::shared_ptr<PluginLibrary> plugin, ScoringRule rule, const std::string& documentName,
                     const Translate& translate) {
    try {
        std::unique_ptr<ScoreModel> model;
        try {
            model = translate(*plugin->MakeTranslator(rule));
        } catch (...) {
            RethrowPluginFailure("reading " + documentName);
        }
        if (!model) throw InputOutputError("reading " + documentName + " gave no model");
        return {std::move(plugin), std::move(model)};
    } catch (const VeskException& refusal) {
        if (refusal.GetCode() != VeskException::UnreadableSource) throw;
        throw InputOutputError(refusal.GetMessage());  // which names the file
    }
}

/// Has the model made, and tells of each fault where that fails.
std::unique_ptr<ScoreModel> TranslateTelling(ScoreTranslator& translator, const SourceDocument& document,
                                             const std::function<void(const VeskException&)>& onFault) {
    auto* const faults = onFault ? dynamic_cast<DocumentFaults*>(&translator) : nullptr;
    if (faults != nullptr) faults->GoOnBehindFaults();
    try {
        return document.Translate(translator);
    } catch (const VeskException& first) {
        if (faults == nullptr || faults->GetFaults().empty()) {
            if (onFault) onFault(first);
            throw;
        }
        for (VeskException fault : faults->GetFaults()) {
            fault.SetSource(document.GetName());
            onFault(fault);
        }
        throw;
    }
}

BaseTranslator::Notices AsLinesAbout(const std::string& documentName, const BaseTranslator::Notices& notices) {
    if (!notices) return notices;
    return [&documentName, &notices](const std::string& text, const DocumentPlace& place, std::string_view advice) {
        std::string line;
        for (const char character : text) {
            if (character == '\n') {
                line += ". ";
            } else {
                line += character;
            }
        }
        DocumentPlace placeInDocument = place;
        placeInDocument.source = documentName;
        notices(line, placeInDocument, advice);
    };
}

/// A text that two values share exactly when they are equal: a number and a text never are, and 0 equals -0.
std::string GetIdentity(const ScoreValue& value) {
    if (value.GetType() == ScoreValue::Numeric) return "#" + FormatNumber(value.GetDouble() + 0.0);
    return "$" + value.GetString();
}

ScoringObstacle FindTargetObstacle(const ScoreDictVar* target) {
    if (target == nullptr) return NoTargetVariable();
    const std::string name = QuoteForMessage(target->GetName());
    const ScoreValueLabelSet* const labels = target->GetValueLabelSet();
    if (labels == nullptr || labels->GetValueLabels().empty()) {
        return {ScoringObstacle::TargetValuesMissing, "The target variable " + name + " declares no values."};
    }
    SeededSet<std::string> seen;
    for (const ScoreValueLabel& label : labels->GetValueLabels()) {
        if (seen.insert(GetIdentity(*label.GetValue())).second) continue;
        return {ScoringObstacle::TargetValueTwice, "The target variable " + name + " declares the value " +
                                                       QuoteForMessage(label.GetValue()->GetString()) + " twice."};
    }
    return {};
}

/// Schemas that name different targets: what was counted for one would be read as counts of the other.
ScoringObstacle FindSecondTarget(const ScoreModel& model) {
    if (model.GetDictionary() == nullptr) return {};
    std::vector<ScoreDictVar*> vars;
    model.GetDictionary()->GetAllVars(vars);
    const ScoreDictVar* first = nullptr;
    for (const ScoreDictVar* var : vars) {
        if (model.GetVarRole(var) != ScoreModel::TargetRole) continue;
        if (first != nullptr) {
            return {ScoringObstacle::SecondTarget,
                    "The model has more than one target variable: " + QuoteForMessage(first->GetName()) + " and " +
                        QuoteForMessage(var->GetName()) + "."};
        }
        first = var;
    }
    return {};
}

/// A set without sub-models needs no target.
bool MayLackTarget(ScoreModel& model) {
    return model.GetModelType() == ScoreModel::SelfLearningModel;
}

ScoringObstacle FindObstacle(ScoreModel& model) {
    const ScoreDictVar* const target = model.GetTargetVar();
    if (target != nullptr || !MayLackTarget(model)) {
        if (ScoringObstacle obstacle = FindTargetObstacle(target)) return obstacle;
    }
    if (ScoringObstacle obstacle = FindSecondTarget(model)) return obstacle;
    const auto* const check = dynamic_cast<const ModelSelfCheck*>(&model);
    return check == nullptr ? ScoringObstacle() : check->FindScoringObstacle();
}

}  // namespace

const char* NameRule(ScoringRule rule) {
    return rule == ScoringRule::Standard ? "standard" : "smoothed";
}

ScoringRule OtherThan(ScoringRule rule) {
    return rule == ScoringRule::Standard ? ScoringRule::Smoothed : ScoringRule::Standard;
}

LoadedModel LoadedModel::Read(std::shared_ptr<PluginLibrary> plugin, const std::filesystem::path& document,
                              ScoringRule rule, const Limits& limits) {
    const std::string name = ToUtf8(document);
    return ReadWith(std::move(plugin), rule, name, [&](ScoreTranslator& translator) {
        if (auto* const ours = dynamic_cast<BaseTranslator*>(&translator)) ours->SetLimits(limits);
        return std::unique_ptr<ScoreModel>(translator.ParseFromTree(name, "UTF-8"));
    });
}

LoadedModel LoadedModel::Read(std::shared_ptr<PluginLibrary> plugin, const SourceDocument& document, ScoringRule rule,
                              const ReadingListeners& listeners) {
    return ReadWith(std::move(plugin), rule, document.GetName(), [&](ScoreTranslator& translator) {
        auto* const base = dynamic_cast<BaseTranslator*>(&translator);
        if (base != nullptr) base->SetNotices(AsLinesAbout(document.GetName(), listeners.onNotice));
        return TranslateTelling(translator, document, listeners.onFault);
    });
}

bool LoadedModel::CanScore(std::shared_ptr<PluginLibrary> plugin, const SourceDocument& document, ScoringRule rule) {
    if (!plugin->Knows(rule)) return false;
    try {
        const auto passOver = [](const std::string&, const DocumentPlace&, std::string_view) {};
        Read(std::move(plugin), document, rule, {.onNotice = passOver, .onFault = {}}).RequireScorable();
        return true;
    } catch (const VeskException&) {
        return false;
    } catch (const UnscorableModelError&) {
        return false;
    }
}

void LoadedModel::RequireScorable() const {
    if (const ScoringObstacle obstacle = FindObstacle(*model)) throw UnscorableModelError(obstacle);
}

}  // namespace nbscore
