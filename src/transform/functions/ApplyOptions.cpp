#include "transform/functions/ApplyOptions.h"

#include <cmath>

namespace nbscore {

ExpressionValue ApplyOptions::ResultFor(ExpressionValue value) const {
    const auto* number = std::get_if<double>(&value);
    const bool isUndefined = number != nullptr && !std::isfinite(*number);
    const bool isMissing = IsMissing(value) || (isUndefined && undefined == UndefinedResult::IsMissing);
    if (!isMissing) return value;
    return defaultValue ? CopyOf(*defaultValue) : ExpressionValue();
}

ExpressionValue ApplyOptions::ResultForMissingArgument() const {
    return mapMissingTo ? CopyOf(*mapMissingTo) : ResultFor({});
}

}  // namespace nbscore
