#include "translator/SubModelReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "translator/AssessmentNames.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

using xercesc::DOMElement;

namespace nbscore {

void ReadSubModelName(const DOMElement& modelElement, DocumentReading& reading) {
    reading.model.SetModelName(RequiredText(reading.transcoder, modelElement, attribute::modelName));
}

void ReadAssessment(const DOMElement& extension, DocumentReading& reading) {
    const double value = RequiredDouble(&extension, attribute::value);
    const XMLCh* name = BaseTranslator::GetAttribute(&extension, attribute::name);
    if (SameText(name, assessment::meanPerformance)) {
        reading.model.SetAssessmentMean(value);
    } else if (SameText(name, assessment::stdDevPerformance) || SameText(name, assessment::trainingSampleSize)) {
        reading.model.SetAssessmentStdDev(value);
    }
}

}  // namespace nbscore
