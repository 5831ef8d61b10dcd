#include "framework/transform/DiscretizeExpression.h"

#include <algorithm>
#include <utility>

namespace nbscore {

DiscretizeExpression::DiscretizeExpression(FieldInput readField, std::vector<Bin> sortedBins,
                                           ExpressionValue valueOutsideBins)
    : input(std::move(readField)), bins(std::move(sortedBins)), resultOutsideBins(std::move(valueOutsideBins)) {}

ExpressionValue DiscretizeExpression::ValueFor(const FieldValues& fields) const {
    const auto number = input.NumberIn(fields);
    if (!number) return CopyOf(input.resultWhenMissing);
    const auto candidate =
        std::ranges::partition_point(bins, [&number](const Bin& bin) { return !bin.interval.EndsAtOrBehind(*number); });
    const bool isInBin = candidate != bins.end() && candidate->interval.Contains(*number);
    return CopyOf(isInBin ? candidate->value : resultOutsideBins);
}

}  // namespace nbscore
