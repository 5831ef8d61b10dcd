#pragma once

#include "framework/XmlFwd.h"
#include "translator/DocumentReading.h"

/// @file
/// What only the model elements of a self-learning document have: names and assessment figures.

namespace nbscore {

/// Reads the sub-model's name, which is required and may be empty.
void ReadSubModelName(const xercesc::DOMElement& modelElement, DocumentReading& reading);

/// Reads an Extension of a model element. `meanPerformance` is the assessment's mean. `stdDevPerformance` is its
/// standard deviation, and `trainingSampleSize` is stored there too, deliberately: of the two the later one counts,
/// which is part of the interface. Any other name is passed over, but its value must be a number all the same.
void ReadAssessment(const xercesc::DOMElement& extension, DocumentReading& reading);

}  // namespace nbscore
