#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// Reads a TextIndex element. Throws VeskException 1 for no term or two and for a normalization without a table, 5 for
/// attributes that hold none of their words, for regular expressions that cannot be used and for rows that lack a cell
/// or look for nothing, 11 for a TableLocator and for what only works word by word under `tokenize="false"`, 12 for
/// more regular expressions in a table than can be kept ready.
std::unique_ptr<const Expression> ReadTextIndex(Element element, FieldScope& scope);

}  // namespace nbscore
