#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "ignored/IgnoredLog.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// So many names of a list are shown; the rest is counted.
constexpr std::size_t longestList = 12;

constexpr const char* adviceOnInputs =
    "Do not use the scores until all inputs stand in BayesInputs itself, those of continuous fields with a Discretize "
    "and PairCounts: distributions cannot be read.";
constexpr IgnoredKind inputsBesideOthers{"alone.", adviceOnInputs, IgnoredKind::HeededByStandard};
constexpr IgnoredKind allInputs{"alone: they are the same for every case.", adviceOnInputs,
                                IgnoredKind::HeededByStandard};
constexpr IgnoredKind countsInExtension{"is not read: the input counts by what stands right in it.",
                                        "Take the counts out of the Extension, or leave them out.",
                                        IgnoredKind::HeededByStandard};
constexpr IgnoredKind countsOfNoNumber{
    "is no number, as the field's values are: no case has it, and of several such rows the last one stands for all.",
    "Give the field the dataType string, if cases have this value; else take its PairCounts out.",
    IgnoredKind::Warning};

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

/// The inputs with counts for a value that is no number: mostly of fields that hold texts.
std::vector<Element> FindInputsOfNoNumber(const ModelsRead& models) {
    std::vector<Element> found;
    for (const Element model : models.elements) {
        for (const Element input : FindInputs(model)) {
            if (std::ranges::any_of(input.GetChildren(Name::PairCounts).List(), IsOfNoNumber)) found.push_back(input);
        }
    }
    return found;
}

/// Which of some fields learn their numbers. A data field goes before a derived one of the same name, and the first
/// declaration before later ones.
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
    for (const Element input : FindInputs(model)) {
        for (const Element extension : input.GetChildren(Name::Extension)) {
            for (const Element counts : extension.GetChildren()) {
                if (!counts.Is(Name::PairCounts) && !counts.Is(Name::TargetValueStats)) continue;
                log.Note(countsInExtension, counts,
                         counts.GetTag() + " in an Extension of the input " + QuotedAttribute(input, Name::fieldName));
            }
        }
    }
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

namespace {

constexpr IgnoredKind closure{"is not used: the number on the margin itself belongs to the bin.",
                              "If numbers stand right on the margin, write it a little lower.",
                              IgnoredKind::HeededByStandard};
constexpr IgnoredKind outerMargin{"is not used: numbers beyond it fall into the bin as well.",
                                  "Empty such cells in the table before scoring, if they should fall into no bin.",
                                  IgnoredKind::HeededByStandard};
constexpr IgnoredKind binNumber{"is not used: bins are numbered 0, 1, 2 and so on as they stand.",
                                "Let PairCounts name the bins by these numbers.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind missingBin{"is not used: a missing value leaves the input out.",
                                 "Replace missing values in the table before scoring.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind otherField{"is not used: the field that the BayesInput names is put into the bins.",
                                 "Let both name the same field.", IgnoredKind::HeededByStandard};

std::optional<double> NumberIn(Element element, Name name) {
    const auto text = element.GetAttribute(name);
    return text ? ReadNumber(*text) : std::nullopt;
}

bool IsOpenOnTheRight(Element interval) {
    const auto text = interval.GetAttribute(Name::closure);
    return text == "openOpen" || text == "closedOpen";
}

/// One input and its bins.
class InputBinning {
public:
    InputBinning(Element inputElement, IgnoredLog& ignoredLog)
        : input(inputElement), log(ignoredLog), ofInput(" of the input " + QuotedAttribute(input, Name::fieldName)) {}

    void Note(Element discretize) {
        NoteAttributes(discretize);
        const std::vector<Element> bins = discretize.GetChildren().List();
        for (std::size_t i = 0; i < bins.size(); ++i) {
            NoteNumber(bins[i], i);
            if (const Element interval = bins[i].GetFirstChild()) {
                NoteMargins(interval, i == 0, i + 1 == bins.size());
            }
        }
    }

private:
    void NoteAttributes(Element discretize) {
        if (discretize.Has(Name::mapMissingTo)) {
            log.Note(missingBin, discretize, Named(discretize, Name::mapMissingTo));
        }
        const auto field = discretize.GetAttribute(Name::field);
        if (field && *field != input.GetAttributeOr(Name::fieldName, {})) {
            log.Note(otherField, discretize, Named(discretize, Name::field));
        }
    }

    /// A name that is no number cannot be confused with another bin's.
    void NoteNumber(Element bin, std::size_t position) {
        const std::optional<double> number = NumberIn(bin, Name::binValue);
        if (!number || *number == static_cast<double>(position)) return;
        log.Note(binNumber, bin, Named(bin, Name::binValue));
    }

    void NoteMargins(Element interval, bool isFirst, bool isLast) {
        if (isFirst) NoteOuterMargin(interval, Name::leftMargin, std::numeric_limits<double>::lowest());
        if (isLast) {
            NoteOuterMargin(interval, Name::rightMargin, std::numeric_limits<double>::max());
        } else if (IsOpenOnTheRight(interval)) {
            log.Note(closure, interval, Named(interval, Name::closure));
        }
    }

    /// @param outermost the margin that no number exceeds.
    void NoteOuterMargin(Element interval, Name name, double outermost) {
        const std::optional<double> margin = NumberIn(interval, name);
        if (margin && *margin != outermost) log.Note(outerMargin, interval, Named(interval, name));
    }

    std::string Named(Element element, Name name) const {
        return std::string(SpellingOf(name)) + ' ' + QuotedAttribute(element, name) + ofInput;
    }

    Element input;
    IgnoredLog& log;
    const std::string ofInput;
};

}  // namespace

void NoteIgnoredBinning(Element model, IgnoredLog& log) {
    for (const Element input : FindInputs(model)) {
        const Element first = input.GetFirstChild();
        const Element discretize = first.Is(Name::DerivedField) ? first.GetFirstChild() : Element();
        if (discretize) InputBinning(input, log).Note(discretize);
    }
}

}  // namespace nbscore
