#include "document/IgnoredModelParts.h"

#include "document/ElementSteps.h"
#include "document/FieldUses.h"
#include "framework/NumberText.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr IgnoredKind notScorable{"is not heeded: the model is scored all the same.",
                                  "Ask whoever made the document what it is for before its scores are used."};
constexpr IgnoredKind targetPrior{"is not used: priors come from the counts of BayesOutput.",
                                  "Change the counts of BayesOutput, if other priors are meant."};
constexpr IgnoredKind otherOutput{"is not computed: only predictions and probabilities are.",
                                  "Compute it from the scores, in what reads them."};
constexpr IgnoredKind localField{"is not read: the input takes the field of that name in the dictionaries.",
                                 "Declare it in the TransformationDictionary, under a name of its own."};
constexpr IgnoredKind earlierOutput{"is not used: of several the last one counts.",
                                    "Leave the BayesOutput that is meant, and take the others out."};

void NoteTargets(const DOMElement& model, IgnoredLog& log) {
    constexpr XmlName priorAttribute{"priorProbability"};
    constexpr XmlName targetElement{"Target"};
    constexpr XmlName targetsElement{"Targets"};
    constexpr XmlName targetValueElement{"TargetValue"};
    for (const DOMElement* targets : ChildrenNamed(model, targetsElement)) {
        for (const DOMElement* target : ChildrenNamed(*targets, targetElement)) {
            for (const DOMElement* value : ChildrenNamed(*target, targetValueElement)) {
                if (BaseTranslator::GetAttribute(value, priorAttribute) == nullptr) continue;
                log.Note(targetPrior, *value,
                         "The priorProbability of the target value " + QuotedAttribute(*value, attribute::value));
            }
        }
    }
}

/// Predictions and probabilities are what scoring gives, though under names of its own.
bool IsComputed(const DOMElement& outputField) {
    constexpr XmlName featureAttribute{"feature"};
    constexpr XmlName rankAttribute{"rank"};
    const XMLCh* const rank = BaseTranslator::GetAttribute(&outputField, rankAttribute);
    if (rank != nullptr && ReadNumber(Utf8Of(rank)) != 1.0) return false;
    const XMLCh* const feature = BaseTranslator::GetAttribute(&outputField, featureAttribute);
    return feature == nullptr || BaseTranslator::IsEqual(feature, "predictedValue") ||
           BaseTranslator::IsEqual(feature, "probability");
}

void NoteOutput(const DOMElement& model, IgnoredLog& log) {
    constexpr XmlName outputElement{"Output"};
    constexpr XmlName outputFieldElement{"OutputField"};
    for (const DOMElement* output : ChildrenNamed(model, outputElement)) {
        for (const DOMElement* field : ChildrenNamed(*output, outputFieldElement)) {
            if (IsComputed(*field)) continue;
            log.Note(otherOutput, *field, "The output field " + QuotedAttribute(*field, attribute::name));
        }
    }
}

/// An input that names a derived field of the model's own is refused, unless a dictionary has a field of that name too.
void NoteLocalFields(const DOMElement& model, IgnoredLog& log) {
    constexpr XmlName localElement{"LocalTransformations"};
    const FieldNames inputs = FindInputFields(model);
    for (const DOMElement* local : ChildrenNamed(model, localElement)) {
        for (const DOMElement* field : ChildrenNamed(*local, element::derivedField)) {
            const XMLCh* const name = BaseTranslator::GetAttribute(field, attribute::name);
            if (name == nullptr || !inputs.contains(name)) continue;
            log.Note(localField, *field,
                     "The field " + QuotedAttribute(*field, attribute::name) + " of LocalTransformations");
        }
    }
}

void NoteEarlierOutputs(const DOMElement& model, IgnoredLog& log) {
    const std::vector<DOMElement*> outputs = ChildrenNamed(model, element::bayesOutput);
    for (std::size_t i = 0; i + 1 < outputs.size(); ++i)
        log.Note(earlierOutput, *outputs[i], "A BayesOutput in front of another");
}

}  // namespace

void NoteIgnoredModelParts(const DOMElement& model, IgnoredLog& log) {
    constexpr XmlName scorableAttribute{"isScorable"};
    const XMLCh* const scorable = BaseTranslator::GetAttribute(&model, scorableAttribute);
    if (scorable != nullptr && (BaseTranslator::IsEqual(scorable, "false") || BaseTranslator::IsEqual(scorable, "0"))) {
        log.Note(notScorable, model, "isScorable " + QuotedAttribute(model, scorableAttribute) + " of the model");
    }
    NoteTargets(model, log);
    NoteOutput(model, log);
    NoteLocalFields(model, log);
    NoteEarlierOutputs(model, log);
}

}  // namespace nbscore
