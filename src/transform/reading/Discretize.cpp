#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "framework/ValueInterval.h"
#include "pmml/DocumentTree.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/DeclaredValidity.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

/// `Discretize`: the value of the bin that a number falls into.
class DiscretizeExpression : public Expression {
public:
    struct Bin {
        ValueInterval interval;
        ExpressionValue value;
    };

    /// @param sortedBins from left to right; no two hold the same number.
    /// @param valueOutsideBins missing when the document gives none.
    DiscretizeExpression(FieldInput readField, std::vector<Bin> sortedBins, ExpressionValue valueOutsideBins);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    std::vector<Bin> bins;
    ExpressionValue resultOutsideBins;
};

DiscretizeExpression::DiscretizeExpression(FieldInput readField, std::vector<Bin> sortedBins,
                                           ExpressionValue valueOutsideBins)
    : input(std::move(readField)), bins(std::move(sortedBins)), resultOutsideBins(std::move(valueOutsideBins)) {}

ExpressionValue DiscretizeExpression::ValueFor(const FieldValues& fields) const {
    const auto number = input.NumberIn(fields);
    if (!number) return input.ResultWhenMissing();
    const auto candidate =
        std::ranges::partition_point(bins, [&number](const Bin& bin) { return !bin.interval.EndsAtOrBehind(*number); });
    const bool isInBin = candidate != bins.end() && candidate->interval.Contains(*number);
    return CopyOf(isInBin ? candidate->value : resultOutsideBins);
}

struct ReadBin {
    DiscretizeExpression::Bin bin;
    Element element;
};

/// Of two bins, the first of which begins no later.
bool Overlap(const ReadBin& left, const ReadBin& right) {
    const ValueInterval& first = left.bin.interval;
    const ValueInterval& second = right.bin.interval;
    if (first.rightMargin != second.leftMargin) return first.rightMargin > second.leftMargin;
    return first.IsClosedOnTheRight() && second.IsClosedOnTheLeft();
}

ValueInterval ReadOnlyInterval(Element bin) {
    const auto children = ChildrenOf(bin);
    if (children.empty()) throw RefusalAt(bin, Refusal::PartMissing, {bin.GetTag(), SpellingOf(Name::Interval)});
    for (const Element child : children) {
        const bool isFirstInterval = child == children.front() && child.Is(Name::Interval);
        if (!isFirstInterval) throw UnexpectedChild(child, bin.GetTag());
    }
    const ValueInterval interval = Placed(children.front(), [&children] { return ReadInterval(children.front()); });
    if (!IsEmpty(interval)) return interval;
    throw RefusalAt(children.front(), Refusal::IntervalEmpty);
}

std::vector<ReadBin> ReadBins(Element element, ValueKind kind, const Transcoder& transcoder) {
    std::vector<ReadBin> bins;
    for (const Element child : ChildrenOf(element)) {
        if (!child.Is(Name::DiscretizeBin)) throw UnexpectedChild(child, element.GetTag());
        const auto value = RequiredAttribute(child, Name::binValue);
        bins.push_back({{ReadOnlyInterval(child), WrittenValue(child, value, kind, transcoder)}, child});
    }
    if (!bins.empty()) return bins;
    throw RefusalAt(element, Refusal::PartMissing, {element.GetTag(), SpellingOf(Name::DiscretizeBin)});
}

void RefuseOverlaps(const std::vector<ReadBin>& sortedBins) {
    const auto found = std::ranges::adjacent_find(sortedBins, Overlap);
    if (found == sortedBins.end()) return;
    const auto valueOf = [](const ReadBin& bin) { return ExcerptOf(RequiredAttribute(bin.element, Name::binValue)); };
    throw RefusalAt(found[1].element, Refusal::BinsOverlap, {valueOf(found[0]), valueOf(found[1])});
}

}  // namespace

std::unique_ptr<const Expression> ReadDiscretize(Element element, FieldScope& scope) {
    const Transcoder& transcoder = scope.GetTranscoder();
    const FieldReference field = ReadFieldReference(element, scope);
    const ValueKind kind = DataTypeOf(element);
    std::vector<ReadBin> bins = ReadBins(element, kind, transcoder);
    std::ranges::stable_sort(bins, BeginsBefore, [](const ReadBin& bin) { return bin.bin.interval; });
    RefuseOverlaps(bins);
    std::vector<DiscretizeExpression::Bin> sortedBins;
    sortedBins.reserve(bins.size());
    for (ReadBin& bin : bins)
        sortedBins.push_back(std::move(bin.bin));
    return std::make_unique<DiscretizeExpression>(
        FieldInput{field, StandIn(WrittenAttribute(element, Name::mapMissingTo, kind, transcoder))},
        std::move(sortedBins), WrittenAttribute(element, Name::defaultValue, kind, transcoder));
}

}  // namespace nbscore
