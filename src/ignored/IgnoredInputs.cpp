#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "ignored/IgnoredLog.h"
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
