#pragma once

#include <memory>

#include "pmml/DocumentTree.h"
#include "transform/evaluation/Expression.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {

/// Compiles an expression element. Throws VeskException 11 for a kind of expression that is not supported, 12 for
/// expressions that nest too deep, and what the readers of the kinds throw.
std::unique_ptr<const Expression> ReadExpression(Element element, FieldScope& scope);

// One for each kind of expression. Refusals are placed at the element at fault.

/// Reads a Discretize element. Its values (`binValue`, `mapMissingTo`, `defaultValue`) are numbers under a numeric
/// `dataType`, else texts. Throws VeskException 1 without a bin, and for a bin that has not exactly one Interval;
/// 5 for a bin that no number can fall into and for bins that overlap; 9 and 12 as the interval's reader does.
std::unique_ptr<const Expression> ReadDiscretize(Element element, FieldScope& scope);

/// Reads a MapValues element with its InlineTable. Its values (cells of the output column, `mapMissingTo`,
/// `defaultValue`) are numbers under a numeric `dataType`, else texts.
///
/// Throws VeskException 1 without a FieldColumnPair or table, 5 for a column that rows lack, 9 for a value that is no
/// number, 11 for a TableLocator, 12 for two rows with the same keys and for one column in two pairs.
std::unique_ptr<const Expression> ReadMapValues(Element element, FieldScope& scope);

/// Reads a NormContinuous element. `mapMissingTo` is a number where it reads as one, else a text. Throws
/// VeskException 5 for fewer than two LinearNorm elements, for ones whose `orig` does not increase, and for an unknown
/// word in `outliers`; 9 for an `orig` or `norm` that is no number.
std::unique_ptr<const Expression> ReadNormContinuous(Element element, FieldScope& scope);

/// Reads a NormDiscrete element. `value` has the kind of the field where it reads as one, `mapMissingTo` is a number
/// where it reads as one; otherwise both are texts. Throws VeskException 11 for any other `method` than
/// "indicator".
std::unique_ptr<const Expression> ReadNormDiscrete(Element element, FieldScope& scope);

/// Reads a TextIndex element. Throws VeskException 1 for no term or two and for a normalization without a table, 5 for
/// attributes with none of the allowed words, for regular expressions that cannot be used and for rows that lack a cell
/// or look for nothing, 11 for a TableLocator and for what only works word by word under `tokenize="false"`, 12 for
/// more regular expressions than may be compiled.
std::unique_ptr<const Expression> ReadTextIndex(Element element, FieldScope& scope);

/// Reads an Apply element: a call of a built-in function, or of one that the document defines. `mapMissingTo` and
/// `defaultValue` have the kind of the function's results where they read as one, else they are texts;
/// where the kind is not known they are read like a Constant without `dataType`. Throws, with the place of the element
/// at fault, VeskException 5 for an attribute with none of the allowed words, 11 for an unknown function (none is
/// ever looked up elsewhere), 12 for a wrong number of arguments.
std::unique_ptr<const Expression> ReadApply(Element element, FieldScope& scope);

}  // namespace nbscore
