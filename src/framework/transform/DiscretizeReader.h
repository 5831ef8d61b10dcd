#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// Reads a Discretize element. Its values (`binValue`, `mapMissingTo`, `defaultValue`) are numbers under a numeric
/// `dataType`, else texts. Throws VeskException 1 without a bin, and for a bin that has not exactly one Interval;
/// 5 for a bin that no number can fall into and for bins that overlap; 9 and 12 as the interval's reader does.
std::unique_ptr<const Expression> ReadDiscretize(Element element, FieldScope& scope);

}  // namespace nbscore
