#include "ignored/IgnoredLog.h"

#include <limits>
#include <optional>

#include "framework/NumberText.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

constexpr IgnoredKind closure{"is not used: the number on the margin itself belongs to the bin.",
                              "If numbers stand right on the margin, write it a little lower."};
constexpr IgnoredKind outerMargin{"is not used: numbers beyond it fall into the bin as well.",
                                  "Empty such cells in the table before scoring, if they should fall into no bin."};
constexpr IgnoredKind binNumber{"is not used: bins are numbered 0, 1, 2 and so on as they stand.",
                                "Let PairCounts name the bins by these numbers."};
constexpr IgnoredKind missingBin{"is not used: a missing value leaves the input out.",
                                 "Replace missing values in the table before scoring."};
constexpr IgnoredKind otherField{"is not used: the field that the BayesInput names is put into the bins.",
                                 "Let both name the same field."};

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

    /// A name that is no number cannot be taken for another bin's.
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

    /// @param outermost the margin that no number is beyond.
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
