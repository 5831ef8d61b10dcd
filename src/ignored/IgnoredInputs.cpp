#include "ignored/IgnoredLog.h"

#include <algorithm>
#include <string_view>

#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

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

std::string ListFields(const std::vector<Element>& inputs) {
    std::string list;
    for (std::size_t i = 0; i < std::min(inputs.size(), longestList); ++i)
        list += (i == 0 ? "" : ", ") + QuotedAttribute(inputs[i], Name::fieldName);
    if (inputs.size() > longestList) list += " and " + std::to_string(inputs.size() - longestList) + " more";
    return list;
}

/// The inputs of one model element.
class InputsOfModel {
public:
    explicit InputsOfModel(Element model) {
        for (const Element input : FindInputsAnywhere(model)) {
            const Element inputs = input.GetParent();
            const bool isRead = inputs.Is(Name::BayesInputs) && inputs.GetParent() == model;
            (isRead ? read : ignored).push_back(input);
        }
    }

    void Note(IgnoredLog& log) const {
        if (ignored.empty()) return;
        std::string text = CountedNoun(ignored.size(), "input") +
                           (ignored.size() == 1 ? " stands in <" : " stand in <") +
                           ExcerptOf(ignored.front().GetParent().GetSpelling()) +
                           (ignored.size() == 1 ? "> and is not read: " : "> and are not read: ") +
                           ListFields(ignored) + ". Answers rest on ";
        text += read.empty() ? "the counts of BayesOutput"
                             : (read.size() == 1 ? "the input " : "the inputs ") + ListFields(read);
        log.Note(read.empty() ? allInputs : inputsBesideOthers, ignored.front(), text);
    }

private:
    std::vector<Element> read;
    std::vector<Element> ignored;
};

/// Whether a field learns its numbers from the counts: it is categorical, holds numbers and declares none.
bool LearnsNumbers(Element field) {
    const auto level = field.GetAttribute(Name::optype);
    if (!level || level == "continuous") return false;
    if (ReadStorageType(field) != ScoreDictVar::NumericStorage) return false;
    return std::ranges::none_of(field.GetChildren(Name::Value).List(),
                                [](Element value) { return value.GetAttributeOr(Name::property, "valid") == "valid"; });
}

bool IsOfNoNumber(Element row) {
    const auto value = row.GetAttribute(Name::value);
    return value && !ReadNumber(*value);
}

/// The inputs with a row whose value is no number: mostly of fields that hold texts.
std::vector<Element> FindInputsOfNoNumber(const ModelsRead& models) {
    std::vector<Element> found;
    for (const Element model : models.elements) {
        for (const Element input : FindInputs(model)) {
            if (std::ranges::any_of(input.GetChildren(Name::PairCounts).List(), IsOfNoNumber)) found.push_back(input);
        }
    }
    return found;
}

/// Which of some fields learn numbers: they are data fields, else derived ones, and of several declarations of a name
/// the first counts.
class LearningFields {
public:
    LearningFields(Element root, const FieldNames& wantedNames) : wanted(wantedNames) {
        LookInto(root.GetChild(Name::DataDictionary), Name::DataField);
        LookInto(root.GetChild(Name::TransformationDictionary), Name::DerivedField);
    }

    bool Has(std::string_view name) const { return learning.contains(name); }

private:
    void LookInto(Element dictionary, Name declaration) {
        for (const Element field : dictionary.GetChildren(declaration)) {
            const auto name = field.GetAttribute(Name::name);
            if (!name || !wanted.contains(*name)) continue;
            if (met.emplace(*name).second && LearnsNumbers(field)) learning.emplace(*name);
        }
    }

    const FieldNames& wanted;
    FieldNames met;
    FieldNames learning;
};

}  // namespace

void NoteIgnoredInputs(Element model, IgnoredLog& log) {
    InputsOfModel(model).Note(log);
}

void NoteCountsOfNoNumber(Element root, const ModelsRead& models, IgnoredLog& log) {
    const std::vector<Element> inputs = FindInputsOfNoNumber(models);
    FieldNames names;
    for (const Element input : inputs) {
        if (const auto name = input.GetAttribute(Name::fieldName)) names.emplace(*name);
    }
    if (names.empty()) return;
    const LearningFields learning(root, names);
    for (const Element input : inputs) {
        const auto name = input.GetAttribute(Name::fieldName);
        if (!name || !learning.Has(*name)) continue;
        for (const Element row : input.GetChildren(Name::PairCounts)) {
            if (!IsOfNoNumber(row)) continue;
            log.Note(countsOfNoNumber, row,
                     "The value " + QuotedAttribute(row, Name::value) + " in PairCounts of the field " +
                         QuotedAttribute(input, Name::fieldName));
        }
    }
}

}  // namespace nbscore
