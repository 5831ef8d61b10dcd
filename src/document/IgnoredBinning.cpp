#include "document/IgnoredBinning.h"

#include <limits>
#include <optional>

#include "document/ElementSteps.h"
#include "framework/NumberText.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName closureAttribute{"closure"};
constexpr XmlName fieldAttribute{"field"};
constexpr XmlName mapMissingToAttribute{"mapMissingTo"};

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

std::optional<double> NumberIn(const DOMElement& element, const XMLCh* name) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&element, name);
    return text == nullptr ? std::nullopt : ReadNumber(Utf8Of(text));
}

bool IsOpenOnTheRight(const DOMElement& interval) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&interval, closureAttribute);
    return text != nullptr &&
           (BaseTranslator::IsEqual(text, "openOpen") || BaseTranslator::IsEqual(text, "closedOpen"));
}

/// One input and its bins.
class InputBinning {
public:
    InputBinning(const DOMElement& inputElement, IgnoredLog& ignoredLog)
        : input(inputElement),
          log(ignoredLog),
          ofInput(" of the input " + QuotedAttribute(input, attribute::fieldName)) {}

    void Note(const DOMElement& discretize) {
        NoteAttributes(discretize);
        const std::vector<DOMElement*> bins = ChildElements(discretize);
        for (std::size_t i = 0; i < bins.size(); ++i) {
            NoteNumber(*bins[i], i);
            if (const DOMElement* const interval = BaseTranslator::GetFirstChildElt(bins[i])) {
                NoteMargins(*interval, i == 0, i + 1 == bins.size());
            }
        }
    }

private:
    void NoteAttributes(const DOMElement& discretize) {
        if (BaseTranslator::GetAttribute(&discretize, mapMissingToAttribute) != nullptr) {
            log.Note(missingBin, discretize, Named(discretize, mapMissingToAttribute));
        }
        const XMLCh* const field = BaseTranslator::GetAttribute(&discretize, fieldAttribute);
        if (field != nullptr && !HoldsText(field, BaseTranslator::GetAttribute(&input, attribute::fieldName))) {
            log.Note(otherField, discretize, Named(discretize, fieldAttribute));
        }
    }

    /// A name that is no number cannot be taken for another bin's.
    void NoteNumber(const DOMElement& bin, std::size_t position) {
        const std::optional<double> number = NumberIn(bin, attribute::binValue);
        if (!number || *number == static_cast<double>(position)) return;
        log.Note(binNumber, bin, Named(bin, attribute::binValue));
    }

    void NoteMargins(const DOMElement& interval, bool isFirst, bool isLast) {
        if (isFirst) NoteOuterMargin(interval, attribute::leftMargin, std::numeric_limits<double>::lowest());
        if (isLast) {
            NoteOuterMargin(interval, attribute::rightMargin, std::numeric_limits<double>::max());
        } else if (IsOpenOnTheRight(interval)) {
            log.Note(closure, interval, Named(interval, closureAttribute));
        }
    }

    /// @param outermost the margin that no number is beyond.
    void NoteOuterMargin(const DOMElement& interval, const XMLCh* name, double outermost) {
        const std::optional<double> margin = NumberIn(interval, name);
        if (margin && *margin != outermost) log.Note(outerMargin, interval, Named(interval, name));
    }

    std::string Named(const DOMElement& element, const XMLCh* name) const {
        return Utf8Of(name) + ' ' + QuotedAttribute(element, name) + ofInput;
    }

    const DOMElement& input;
    IgnoredLog& log;
    const std::string ofInput;
};

}  // namespace

void NoteIgnoredBinning(const DOMElement& model, IgnoredLog& log) {
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
        for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput)) {
            const DOMElement* const first = BaseTranslator::GetFirstChildElt(input);
            if (first == nullptr || !IsNamed(first, element::derivedField)) continue;
            const DOMElement* const discretize = BaseTranslator::GetFirstChildElt(first);
            if (discretize != nullptr) InputBinning(*input, log).Note(*discretize);
        }
    }
}

}  // namespace nbscore
