#pragma once

#include <optional>

#include "transform/evaluation/ExpressionValue.h"

namespace nbscore {

/// What an `Apply` says beside its function: what becomes of missing arguments and of results that are none.
struct ApplyOptions {
    enum class UndefinedResult { IsMissing, StaysAsItIs };

    /// The result of a call with a missing argument, which is then not made. Never missing itself.
    std::optional<ExpressionValue> mapMissingTo;
    /// What a missing result becomes. Never missing itself.
    std::optional<ExpressionValue> defaultValue;
    /// An undefined operation (division by zero, the logarithm of a negative number, a result that no double can hold)
    /// has no result, unless the document wants the number as it is.
    UndefinedResult undefined = UndefinedResult::IsMissing;

    /// The result of a call that gave this value.
    ExpressionValue ResultFor(ExpressionValue value) const;
    /// The result of a call with a missing argument, of a function that gives missing for it.
    ExpressionValue ResultForMissingArgument() const;
};

}  // namespace nbscore
