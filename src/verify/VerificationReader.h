#pragma once

#include <vector>

#include "pmml/DocumentTree.h"
#include "verify/VerificationSuite.h"

namespace nbscore {

/// Reads the ModelVerification of each model element that the plug-in reads, in document order. Takes time proportional
/// to the document.
///
/// Throws VeskException, with the place: 1 for a part that is missing, 2 for a VerificationField without `field`, 5 for
/// a negative precision or zero threshold, for a cell that holds elements and for text between cells, 9 for what should
/// be a number and is none, 11 for a TableLocator, which points outside the document, 12 for parts that contradict each
/// other: two of what may be there once, a field, a column of two fields or of one row, or an output field that is
/// there twice, a recordCount or fieldCount that is not the true number.
std::vector<VerificationSuite> ReadVerificationSuites(const DocumentTree& document);

}  // namespace nbscore
