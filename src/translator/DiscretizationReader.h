#pragma once

#include <memory>

#include "naivebayes/NBinningEncoder.h"
#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"
#include "reading/BaseTranslator.h"

namespace nbscore {

/// Reads the DerivedField of a continuous input, whose Discretize lists the bins, into an encoder.
///
/// The cutpoints are the left margins of all bins but the first, in document order; each must equal the right
/// margin of the bin before. Their order is not looked at, nor on which side an Interval is closed: the
/// encoder has a rule of its own for a value that equals a cutpoint.
///
/// Throws VeskException 6 for another element, after a notice of two lines (BaseTranslator::GiveNotice); 1 for another
/// element inside it; 12 for margins that do not meet; 5 for fewer than two bins.
/// @param derivedField may be none.
/// @param parent where the fault stands then; may be none.
std::unique_ptr<NBinningEncoder> ReadDiscretization(const BaseTranslator& translator, const Transcoder& transcoder,
                                                    Element derivedField, Element parent);

}  // namespace nbscore
