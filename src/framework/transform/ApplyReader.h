#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// Reads an Apply element: a call of a built-in function, or of one that the document defines. `mapMissingTo` and
/// `defaultValue` have the kind of the function's results where they read as one, else they are texts as they stand;
/// where the kind is not known they are read like a Constant without `dataType`. Throws, with the place of the element
/// at fault, VeskException 5 for an attribute that holds none of its words, 11 for a function that nobody knows (none
/// is ever looked up elsewhere), 12 for a wrong number of arguments.
std::unique_ptr<const Expression> ReadApply(Element element, FieldScope& scope);

}  // namespace nbscore
