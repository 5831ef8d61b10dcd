#include "translator/ElementReaders.h"

#include <cstddef>

#include "pmml/Refusal.h"
#include "translator/DocumentReading.h"

namespace nbscore {

namespace {

/// The target category that an entry counts; negative when its value is none.
int FindTargetIndex(const Transcoder& transcoder, Element entry, INBVeskEncoder* targetEncoder, bool addUnknownValues) {
    if (targetEncoder != nullptr && targetEncoder->GetEncoderType() == INBVeskEncoder::Binning) {
        return IntAt(entry, RequiredAttribute(entry, Name::value));
    }
    const std::string value = RequiredText(transcoder, entry, Name::value);
    if (targetEncoder == nullptr) return INBVeskEncoder::unknownCategory;
    return addUnknownValues ? targetEncoder->AddCategory(value) : targetEncoder->GetCategory(value);
}

void StoreCount(Element entry, int targetIndex, std::vector<double>& counts) {
    const double count = RequiredDouble(entry, Name::count);
    if (targetIndex > highestCountIndex) {
        throw RefusalAt(entry, Refusal::TargetIndexTooHigh,
                        {std::to_string(targetIndex), std::to_string(highestCountIndex)});
    }
    const auto index = static_cast<std::size_t>(targetIndex);
    if (counts.size() <= index) counts.resize(index + 1, 0.0);
    counts[index] = count;
}

}  // namespace

std::vector<double> ReadTargetValueCounts(const Transcoder& transcoder, Element parent, INBVeskEncoder* targetEncoder,
                                          const TargetValueCountsOptions& options, LimitWatch& watch) {
    const Element valueCounts = parent.GetFirstChild();
    RequireName(valueCounts, Name::TargetValueCounts, parent, Refusal::TargetValueCountsExpected);
    std::vector<double> counts;
    const int numCategories = targetEncoder != nullptr ? targetEncoder->GetNumCategories() : 0;
    if (numCategories > 1) counts.assign(static_cast<std::size_t>(numCategories), 0.0);

    int numEntries = 0;
    for (const Element entry : valueCounts.GetChildren()) {
        ++numEntries;
        watch.Step();
        RequireName(entry, Name::TargetValueCount, valueCounts, Refusal::TargetValueCountExpected);
        const int targetIndex = FindTargetIndex(transcoder, entry, targetEncoder, options.addUnknownValues);
        if (targetIndex >= 0) StoreCount(entry, targetIndex, counts);
    }
    if (options.outputMode && options.selfLearning && (numEntries < 1 || numEntries > 2)) {
        throw RefusalAt(valueCounts, Refusal::OutputCountsNotOneOrTwo);
    }
    return counts;
}

}  // namespace nbscore
