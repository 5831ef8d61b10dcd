#pragma once

#include "framework/transform/ExpressionValue.h"

namespace nbscore {

/// What a `dataType` makes of values. Any: nothing, they stay as they are.
enum class ValueKind { Any, Number, Truth, Text };

/// The value as one of this kind; missing when it cannot be read as one.
ExpressionValue CastTo(ValueKind kind, ExpressionValue value);

}  // namespace nbscore
