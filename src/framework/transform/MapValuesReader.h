#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// Reads a MapValues element with its InlineTable. Its values (cells of the output column, `mapMissingTo`,
/// `defaultValue`) are numbers under a numeric `dataType`, else texts.
///
/// Throws VeskException 1 without a FieldColumnPair or table, 5 for a column that rows lack, 9 for a value that is no
/// number, 11 for a TableLocator, 12 for two rows with the same keys and for one column in two pairs.
std::unique_ptr<const Expression> ReadMapValues(Element element, FieldScope& scope);

}  // namespace nbscore
