#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "framework/NumberText.h"
#include "ignored/IgnoredLog.h"
#include "pmml/DocumentParts.h"
#include "pmml/KnownContent.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

constexpr IgnoredKind furtherModel{"is not read: only the first NaiveBayesModel is.",
                                   "Make sure that the first one is meant, or give the other a document of its own.",
                                   IgnoredKind::Warning};
constexpr IgnoredKind otherKind{"is not read: only a NaiveBayesModel is.",
                                "Make sure that the NaiveBayesModel alone answers what is asked."};
constexpr const char* adviceOnWrapper =
    "Make sure that the NaiveBayesModel alone answers what is asked, or give it a document of its own.";
constexpr IgnoredKind wrapper{
    "around the NaiveBayesModel is not read: the model answers every case alone, whatever the segments say.",
    adviceOnWrapper, IgnoredKind::Warning};
constexpr IgnoredKind wrapperWithRules{
    "around the NaiveBayesModel is not read: what it says of fields, the target or outputs is not used.",
    adviceOnWrapper, IgnoredKind::HeededByStandard};
constexpr IgnoredKind mereWrapper{"around the NaiveBayesModel is not read: the model answers every case by itself.",
                                  adviceOnWrapper};

/// A schema that only lists fields leaves values as they are.
bool TreatsValues(Element schema) {
    constexpr std::array treatments = {Name::missingValueReplacement, Name::missingValueTreatment,
                                       Name::invalidValueTreatment, Name::outliers};
    return std::ranges::any_of(schema.GetChildren(Name::MiningField).List(), [&treatments](Element field) {
        return std::ranges::any_of(treatments, [field](Name treatment) { return field.Has(treatment); });
    });
}

/// Of its own, the model in it aside.
bool HasUnknownContent(Element around) {
    bool isFound = false;
    FindUnknownContent(
        around, [&isFound](const UnknownContent& /*unknown*/) { isFound = true; },
        [](Element child) { return !child.Is(Name::NaiveBayesModel); });
    return isFound;
}

const IgnoredKind& KindOfWrapper(Element around) {
    const Element segmentation = around.GetChild(Name::Segmentation);
    const std::vector<Element> segments =
        segmentation ? segmentation.GetChildren(Name::Segment).List() : std::vector<Element>();
    if (segments.size() != 1 || !segments.front().GetChild(Name::True) || HasUnknownContent(around)) return wrapper;
    const bool hasRules = around.GetChild(Name::Output) || around.GetChild(Name::Targets) ||
                          around.GetChild(Name::LocalTransformations) ||
                          std::ranges::any_of(around.GetChildren(Name::MiningSchema).List(), TreatsValues);
    return hasRules ? wrapperWithRules : mereWrapper;
}

/// By their index in the tree.
std::set<std::uint32_t> AncestorsOf(const ModelsRead& models) {
    std::set<std::uint32_t> ancestors;
    for (const Element model : models.elements) {
        Element element = model.GetParent();
        while (element && ancestors.insert(element.GetIndex()).second)
            element = element.GetParent();
    }
    return ancestors;
}

class ModelWalk {
public:
    ModelWalk(const ModelsRead& modelsRead, IgnoredLog& ignoredLog)
        : models(modelsRead), log(ignoredLog), around(AncestorsOf(modelsRead)) {}

    /// The models right below an element, and those in the segments of sets among them.
    void Visit(Element parent) {
        for (const Element child : parent.GetChildren()) {
            if (child.Is(Name::NaiveBayesModel)) {
                VisitNaiveBayes(child);
            } else if (IsModel(child)) {
                VisitOther(child);
            }
        }
    }

private:
    void VisitNaiveBayes(Element model) {
        if (models.selfLearning || model == models.elements.front()) return;
        log.Note(furtherModel, model, "A further <NaiveBayesModel>");
    }

    void VisitOther(Element model) {
        const std::string tag = '<' + std::string(model.GetSpelling()) + '>';
        log.Note(around.contains(model.GetIndex()) ? KindOfWrapper(model) : otherKind, model, tag);
        if (!model.Is(Name::MiningModel)) return;
        for (const Element segments : model.GetChildren(Name::Segmentation)) {
            for (const Element one : segments.GetChildren(Name::Segment))
                Visit(one);
        }
    }

    const ModelsRead& models;
    IgnoredLog& log;
    /// What the models that are read stand in.
    const std::set<std::uint32_t> around;
};

constexpr IgnoredKind unknownContent{"is not read, and could change the answer.",
                                     "Take it out, or correct its name: docs/standard.md lists what is known.",
                                     IgnoredKind::Warning};

bool IsInputs(Element element) {
    const std::string_view name = WithoutPrefix(element.GetSpelling());
    return name == SpellingOf(Name::BayesInput) || name == SpellingOf(Name::BayesInputs);
}

/// A model is read wherever it stands.
bool IsRead(Element element, const ModelsRead& models) {
    if (models.elements.empty() || !element.Is(Name::NaiveBayesModel)) return false;
    return models.selfLearning || element == models.elements.front();
}

void Note(const UnknownContent& unknown, IgnoredLog& log) {
    const Element element = unknown.element;
    const std::string tag = ExcerptOf(element.GetTag());
    log.Note(unknownContent, element,
             unknown.attribute.empty()
                 ? tag + " in " + ExcerptOf(element.GetParent().GetTag())
                 : ExcerptOf(unknown.attribute) + " \"" + ExcerptOf(unknown.value) + "\" of " + tag);
}

constexpr IgnoredKind notScorable{"is ignored: the model is scored all the same.",
                                  "Ask whoever made the document what it is for before its scores are used.",
                                  IgnoredKind::Warning};
constexpr IgnoredKind otherFunction{"is ignored: the model is scored as a classification.",
                                    "Ask whoever made the document what it is for before its scores are used.",
                                    IgnoredKind::Warning};
constexpr IgnoredKind targetPrior{"is not used: priors come from the counts of BayesOutput.",
                                  "Change the counts of BayesOutput, if other priors are meant.",
                                  IgnoredKind::HeededByStandard};
constexpr IgnoredKind otherOutput{"is not computed: only predictions and probabilities are.",
                                  "Compute it from the scores, in what reads them.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind localField{"is not read: the input takes the field of that name in the dictionaries.",
                                 "Declare it in the TransformationDictionary, under a name of its own.",
                                 IgnoredKind::HeededByStandard};
constexpr IgnoredKind earlierOutput{"is not used: of several the last one counts.",
                                    "Leave the BayesOutput that is meant, and take the others out.",
                                    IgnoredKind::Warning};

void NoteTargets(Element model, IgnoredLog& log) {
    for (const Element targets : model.GetChildren(Name::Targets)) {
        for (const Element target : targets.GetChildren(Name::Target)) {
            for (const Element value : target.GetChildren(Name::TargetValue)) {
                if (!value.Has(Name::priorProbability)) continue;
                log.Note(targetPrior, value,
                         "The priorProbability of the target value " + QuotedAttribute(value, Name::value));
            }
        }
    }
}

/// Predictions and probabilities are what scoring gives, though under names of its own.
bool IsComputed(Element outputField) {
    const auto rank = outputField.GetAttribute(Name::rank);
    if (rank && ReadNumber(*rank) != 1.0) return false;
    const std::string_view feature = outputField.GetAttributeOr(Name::feature, "predictedValue");
    return feature == "predictedValue" || feature == "probability";
}

void NoteOutput(Element model, IgnoredLog& log) {
    for (const Element output : model.GetChildren(Name::Output)) {
        for (const Element field : output.GetChildren(Name::OutputField)) {
            if (IsComputed(field)) continue;
            log.Note(otherOutput, field, "The output field " + QuotedAttribute(field, Name::name));
        }
    }
}

/// An input that names a derived field of the model's own is refused, unless a dictionary has a field of that name too.
void NoteLocalFields(Element model, IgnoredLog& log) {
    const FieldNames inputs = FindInputFields(model);
    for (const Element local : model.GetChildren(Name::LocalTransformations)) {
        for (const Element field : local.GetChildren(Name::DerivedField)) {
            const auto name = field.GetAttribute(Name::name);
            if (!name || !inputs.contains(*name)) continue;
            log.Note(localField, field, "The field " + QuotedAttribute(field, Name::name) + " of LocalTransformations");
        }
    }
}

void NoteEarlierOutputs(Element model, IgnoredLog& log) {
    const std::vector<Element> outputs = model.GetChildren(Name::BayesOutput).List();
    for (std::size_t i = 0; i + 1 < outputs.size(); ++i)
        log.Note(earlierOutput, outputs[i], "A BayesOutput in front of another");
}

}  // namespace

void NoteUnknownContent(Element root, const ModelsRead& models, IgnoredLog& log) {
    if (!IsModel(root)) {
        const auto note = [&](const UnknownContent& unknown) {
            const bool isNotedAsModel = IsModel(unknown.element) && unknown.element.GetParent() == root;
            if (!isNotedAsModel && !IsRead(unknown.element, models)) Note(unknown, log);
        };
        FindUnknownContent(root, note, [](Element child) { return !IsModel(child); });
    }
    const auto note = [&](const UnknownContent& unknown) {
        const bool isTheElement = unknown.attribute.empty();
        // NoteIgnoredInputs tells of inputs.
        if (isTheElement && (IsInputs(unknown.element) || IsRead(unknown.element, models))) return;
        Note(unknown, log);
    };
    for (const Element model : models.elements)
        FindUnknownContent(model, note);
}

void NoteIgnoredModels(Element root, const ModelsRead& models, IgnoredLog& log) {
    ModelWalk(models, log).Visit(root);
}

void NoteIgnoredModelParts(Element model, IgnoredLog& log) {
    const auto scorable = model.GetAttribute(Name::isScorable);
    if (scorable == "false" || scorable == "0") {
        log.Note(notScorable, model, "isScorable " + QuotedAttribute(model, Name::isScorable) + " of the model");
    }
    if (model.GetAttributeOr(Name::functionName, "classification") != "classification") {
        log.Note(otherFunction, model, "functionName " + QuotedAttribute(model, Name::functionName) + " of the model");
    }
    NoteTargets(model, log);
    NoteOutput(model, log);
    NoteLocalFields(model, log);
    NoteEarlierOutputs(model, log);
}

}  // namespace nbscore
