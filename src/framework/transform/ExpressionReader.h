#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// Compiles an expression element. Throws VeskException 11 for a kind of expression that is not supported, 12 for
/// expressions that nest too deep, and what the readers of the kinds throw.
std::unique_ptr<const Expression> ReadExpression(Element element, FieldScope& scope);

}  // namespace nbscore
