#include "framework/transform/DiscretizeExpression.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

bool EndsBefore(const ValueInterval& interval, double number) {
    const bool isClosed =
        interval.closure == ValueInterval::OpenClosed || interval.closure == ValueInterval::ClosedClosed;
    return isClosed ? interval.rightMargin < number : interval.rightMargin <= number;
}

}  // namespace

DiscretizeExpression::DiscretizeExpression(FieldInput readField, std::vector<Bin> sortedBins,
                                           ExpressionValue valueOutsideBins)
    : input(std::move(readField)), bins(std::move(sortedBins)), resultOutsideBins(std::move(valueOutsideBins)) {}

ExpressionValue DiscretizeExpression::ValueFor(const FieldValues& fields) const {
    const auto number = input.NumberIn(fields);
    if (!number) return input.resultWhenMissing;
    const auto candidate =
        std::ranges::partition_point(bins, [&number](const Bin& bin) { return EndsBefore(bin.interval, *number); });
    return candidate != bins.end() && candidate->interval.Contains(*number) ? candidate->value : resultOutsideBins;
}

}  // namespace nbscore
