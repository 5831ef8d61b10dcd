#include "translator/DiscretizationReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <limits>
#include <string>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();

/// Walks through the bins, collecting the cutpoints between them.
class BinReader {
public:
    explicit BinReader(const Transcoder& documentTranscoder) : transcoder(documentTranscoder) {}

    void Read(const DOMElement& bin, const DOMElement& discretize);
    const std::vector<double>& GetCutpoints() const { return cutpoints; }

private:
    void AppendCutpoint(const DOMElement& interval);

    const Transcoder& transcoder;
    std::vector<double> cutpoints;
    double leftMargin = lowest;
    double previousRightMargin = lowest;
    bool isFirst = true;
};

void BinReader::Read(const DOMElement& bin, const DOMElement& discretize) {
    RequireName(&bin, element::discretizeBin, &discretize, VeskException::UnexpectedElement,
                "Element DiscretizeBin was expected here.");
    // Bins are numbered, so their names serve nothing; but one that the encoding cannot hold is refused.
    AttributeText(transcoder, bin, attribute::binValue);
    const DOMElement* interval = BaseTranslator::GetFirstChildElt(&bin);
    RequireName(interval, element::interval, &bin, VeskException::UnexpectedElement,
                "Element Interval was expected here.");
    if (!isFirst) AppendCutpoint(*interval);
    isFirst = false;
    // Empty counts as absent here, but not for the left margin.
    const XMLCh* right = BaseTranslator::GetAttribute(interval, attribute::rightMargin);
    if (!SameText(right, nullptr)) previousRightMargin = DoubleAt(interval, right);
}

void BinReader::AppendCutpoint(const DOMElement& interval) {
    if (const XMLCh* left = BaseTranslator::GetAttribute(&interval, attribute::leftMargin)) {
        leftMargin = DoubleAt(&interval, left);
    }
    if (!(leftMargin == previousRightMargin)) {
        throw RefusalAt(&interval, VeskException::InconsistentDocument, "Error in Interval margins.");
    }
    cutpoints.push_back(leftMargin);
}

void RequireDerivedField(const BaseTranslator& translator, const DOMElement* derivedField, const DOMElement* parent) {
    if (HasName(derivedField, element::derivedField)) return;
    // For people at a terminal, so UTF-8 whatever the document's encoding is; and a text that is broken is no reason
    // to refuse the document otherwise.
    const std::string name = Utf8Of(derivedField != nullptr ? derivedField->getNodeName() : nullptr);
    const DOMElement* const faulty = derivedField != nullptr ? derivedField : parent;
    translator.GiveNotice("Element DerivedField not found in ParseDiscretize\nThe element is " + name, faulty);
    throw RefusalAt(faulty, VeskException::DerivedFieldExpected, "Element DerivedField was expected here.");
}

}  // namespace

std::unique_ptr<NBinningEncoder> ReadDiscretization(const BaseTranslator& translator, const Transcoder& transcoder,
                                                    const DOMElement* derivedField, const DOMElement* parent) {
    RequireDerivedField(translator, derivedField, parent);
    const DOMElement* discretize = BaseTranslator::GetFirstChildElt(derivedField);
    RequireName(discretize, element::discretize, derivedField, VeskException::UnexpectedElement,
                "Element Discretize was expected here.");
    BinReader bins(transcoder);
    for (const DOMElement* bin = BaseTranslator::GetFirstChildElt(discretize); bin != nullptr;
         bin = BaseTranslator::GetNextSiblingElt(bin)) {
        bins.Read(*bin, *discretize);
    }
    if (bins.GetCutpoints().empty()) {
        // The words say the opposite of the cause. Deliberate: the text is part of the interface.
        throw RefusalAt(discretize, VeskException::InvalidContent,
                        "NaiveBayesTranslator::ParseDiscretize: cutpoints found");
    }
    return std::make_unique<NBinningEncoder>(bins.GetCutpoints());
}

}  // namespace nbscore
