#include "document/IgnoredInputs.h"
#include "framework/xml/PmmlPrefix.h"

#include <algorithm>

#include "document/ElementSteps.h"
#include "document/FieldUses.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName optypeAttribute{"optype"};
constexpr XmlName propertyAttribute{"property"};
constexpr XmlName valueElement{"Value"};

/// So many names of a list are told; the rest is counted.
constexpr std::size_t longestList = 12;

constexpr const char* adviceOnInputs =
    "Do not use the scores until all inputs stand in BayesInputs itself, those of continuous fields with a Discretize "
    "and PairCounts: distributions cannot be read.";
constexpr IgnoredKind inputsBesideOthers{"alone.", adviceOnInputs, true};
constexpr IgnoredKind allInputs{"alone: they are the same for every case.", adviceOnInputs, true};
constexpr IgnoredKind countsOfNoNumber{
    "is no number, as the field's values are: no case has it, and of several such rows the last one stands for all.",
    "Give the field the dataType string, if cases have this value; else take its PairCounts out.", true};

std::string ListFields(const std::vector<const DOMElement*>& inputs) {
    std::string list;
    for (std::size_t i = 0; i < std::min(inputs.size(), longestList); ++i)
        list += (i == 0 ? "" : ", ") + QuotedAttribute(*inputs[i], attribute::fieldName);
    if (inputs.size() > longestList) list += " and " + std::to_string(inputs.size() - longestList) + " more";
    return list;
}

void AddInputsIn(const DOMElement& part, std::vector<const DOMElement*>& inputs) {
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&part); child != nullptr;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (HoldsText(WithoutPrefix(child->getNodeName()), element::bayesInput)) {
            inputs.push_back(child);
        } else if (!IsNamed(child, element::naiveBayesModel)) {
            AddInputsIn(*child, inputs);
        }
    }
}

/// The inputs of one model element.
class InputsOfModel {
public:
    explicit InputsOfModel(const DOMElement& model) {
        for (const DOMElement* input : FindInputsAnywhere(model)) {
            const xercesc::DOMNode* const inputs = input->getParentNode();
            const bool isRead = IsNamed(inputs, element::bayesInputs) && inputs->getParentNode() == &model;
            (isRead ? read : ignored).push_back(input);
        }
    }

    void Note(IgnoredLog& log) const {
        if (ignored.empty()) return;
        std::string text = CountedNoun(ignored.size(), "input") +
                           (ignored.size() == 1 ? " stands in <" : " stand in <") +
                           ExcerptOf(ignored.front()->getParentNode()->getNodeName()) +
                           (ignored.size() == 1 ? "> and is not read: " : "> and are not read: ") +
                           ListFields(ignored) + ". Answers rest on ";
        text += read.empty() ? "the counts of BayesOutput"
                             : (read.size() == 1 ? "the input " : "the inputs ") + ListFields(read);
        log.Note(read.empty() ? allInputs : inputsBesideOthers, *ignored.front(), text);
    }

private:
    std::vector<const DOMElement*> read;
    std::vector<const DOMElement*> ignored;
};

/// Whether a field learns its numbers from the counts: it is categorical, holds numbers and declares none.
bool LearnsNumbers(const DOMElement& field) {
    const XMLCh* const level = BaseTranslator::GetAttribute(&field, optypeAttribute);
    if (level == nullptr || BaseTranslator::IsEqual(level, "continuous")) return false;
    if (ReadStorageType(&field) != ScoreDictVar::NumericStorage) return false;
    return std::ranges::none_of(ChildrenNamed(field, valueElement), [](const DOMElement* value) {
        const XMLCh* const meaning = BaseTranslator::GetAttribute(value, propertyAttribute);
        return meaning == nullptr || BaseTranslator::IsEqual(meaning, "valid");
    });
}

bool IsOfNoNumber(const DOMElement& row) {
    const XMLCh* const value = BaseTranslator::GetAttribute(&row, attribute::value);
    return value != nullptr && !ReadNumber(Utf8Of(value));
}

/// The inputs with a row whose value is no number: mostly of fields that hold texts.
std::vector<const DOMElement*> FindInputsOfNoNumber(const std::vector<DOMElement*>& models) {
    std::vector<const DOMElement*> found;
    for (const DOMElement* model : models) {
        for (const DOMElement* inputs : ChildrenNamed(*model, element::bayesInputs)) {
            for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput)) {
                const std::vector<DOMElement*> rows = ChildrenNamed(*input, element::pairCounts);
                if (std::ranges::any_of(rows, [](const DOMElement* row) { return IsOfNoNumber(*row); })) {
                    found.push_back(input);
                }
            }
        }
    }
    return found;
}

/// Which of some fields learn numbers: they are data fields, else derived ones, and of several declarations of a name
/// the first counts.
class LearningFields {
public:
    LearningFields(const DOMElement& root, const FieldNames& wantedNames) : wanted(wantedNames) {
        LookInto(BaseTranslator::GetChildByTag(&root, element::dataDictionary), element::dataField);
        LookInto(BaseTranslator::GetChildByTag(&root, element::transformationDictionary), element::derivedField);
    }

    bool Has(const XMLCh* name) const { return learning.contains(name); }

private:
    void LookInto(const DOMElement* dictionary, const XMLCh* declaration) {
        for (const DOMElement* field = BaseTranslator::GetFirstChildElt(dictionary); field != nullptr;
             field = BaseTranslator::GetNextSiblingElt(field)) {
            const XMLCh* const name = BaseTranslator::GetAttribute(field, attribute::name);
            if (name == nullptr || !wanted.contains(name) || !IsNamed(field, declaration)) continue;
            if (met.insert(name).second && LearnsNumbers(*field)) learning.insert(name);
        }
    }

    const FieldNames& wanted;
    FieldNames met;
    FieldNames learning;
};

}  // namespace

std::vector<const DOMElement*> FindInputsAnywhere(const DOMElement& part) {
    std::vector<const DOMElement*> inputs;
    AddInputsIn(part, inputs);
    return inputs;
}

void NoteIgnoredInputs(const DOMElement& model, IgnoredLog& log) {
    InputsOfModel(model).Note(log);
}

void NoteCountsOfNoNumber(const DOMElement& root, const std::vector<DOMElement*>& models, IgnoredLog& log) {
    const std::vector<const DOMElement*> inputs = FindInputsOfNoNumber(models);
    FieldNames names;
    for (const DOMElement* input : inputs) {
        if (const XMLCh* const name = BaseTranslator::GetAttribute(input, attribute::fieldName)) names.insert(name);
    }
    if (names.empty()) return;
    const LearningFields learning(root, names);
    for (const DOMElement* input : inputs) {
        const XMLCh* const name = BaseTranslator::GetAttribute(input, attribute::fieldName);
        if (name == nullptr || !learning.Has(name)) continue;
        for (const DOMElement* row : ChildrenNamed(*input, element::pairCounts)) {
            if (!IsOfNoNumber(*row)) continue;
            log.Note(countsOfNoNumber, *row,
                     "The value " + QuotedAttribute(*row, attribute::value) + " in PairCounts of the field " +
                         QuotedAttribute(*input, attribute::fieldName));
        }
    }
}

}  // namespace nbscore
