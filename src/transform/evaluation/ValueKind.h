#pragma once

#include <string>

#include "transform/evaluation/ExpressionValue.h"

namespace nbscore {

/// What a `dataType` makes of values. Any: nothing, they stay as they are.
enum class ValueKind { Any, Number, Truth, Text };

/// The value as one of this kind; missing when it cannot be read as one.
ExpressionValue CastTo(ValueKind kind, ExpressionValue value);

/// A text that a document or a case holds, as a value of this kind where the whole of it reads as one, else as it
/// stands. Of any kind it is a number where it reads as one, as a constant without a type is.
ExpressionValue ReadAs(ValueKind kind, std::string text);

}  // namespace nbscore
