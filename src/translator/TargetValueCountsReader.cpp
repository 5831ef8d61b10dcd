#include "translator/TargetValueCountsReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/CountLimits.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

/// The target category that an entry counts; negative when its value is none.
int FindTargetIndex(const Transcoder& transcoder, const DOMElement& entry, INBVeskEncoder* targetEncoder,
                    bool addUnknownValues) {
    if (targetEncoder != nullptr && targetEncoder->GetEncoderType() == INBVeskEncoder::Binning) {
        return IntAt(&entry, BaseTranslator::GetAttributeForced(&entry, attribute::value));
    }
    const std::string value = RequiredText(transcoder, entry, attribute::value);
    if (targetEncoder == nullptr) return INBVeskEncoder::unknownCategory;
    return addUnknownValues ? targetEncoder->AddCategory(value) : targetEncoder->GetCategory(value);
}

void StoreCount(const DOMElement& entry, int targetIndex, std::vector<double>& counts) {
    const double count = RequiredDouble(&entry, attribute::count);
    RequireIndexInRange(entry, targetIndex, "Target index");
    const auto index = static_cast<std::size_t>(targetIndex);
    if (counts.size() <= index) counts.resize(index + 1, 0.0);
    counts[index] = count;
}

}  // namespace

std::vector<double> ReadTargetValueCounts(const Transcoder& transcoder, const DOMElement& parent,
                                          INBVeskEncoder* targetEncoder, const TargetValueCountsOptions& options,
                                          LimitWatch& watch) {
    const DOMElement* valueCounts = BaseTranslator::GetFirstChildElt(&parent);
    RequireName(valueCounts, element::targetValueCounts, &parent, VeskException::UnexpectedElement,
                "Element <TargetValueCounts> was expected here.");
    std::vector<double> counts;
    const int numCategories = targetEncoder != nullptr ? targetEncoder->GetNumCategories() : 0;
    if (numCategories > 1) counts.assign(static_cast<std::size_t>(numCategories), 0.0);

    int numEntries = 0;
    for (const DOMElement* entry = BaseTranslator::GetFirstChildElt(valueCounts); entry != nullptr;
         entry = BaseTranslator::GetNextSiblingElt(entry), ++numEntries) {
        watch.Step();
        RequireName(entry, element::targetValueCount, valueCounts, VeskException::UnexpectedElement,
                    "Element <TargetValueCount> was expected here.");
        const int targetIndex = FindTargetIndex(transcoder, *entry, targetEncoder, options.addUnknownValues);
        if (targetIndex >= 0) StoreCount(*entry, targetIndex, counts);
    }
    if (options.outputMode && options.selfLearning && (numEntries < 1 || numEntries > 2)) {
        // The text names the outer element. Deliberate: it is part of the interface.
        throw RefusalAt(valueCounts, VeskException::InvalidContent,
                        "One or Two <TargetValueCounts> elements required!!");
    }
    return counts;
}

}  // namespace nbscore
