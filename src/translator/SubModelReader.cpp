#include "translator/SubModelReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

constexpr XmlName meanPerformance{"meanPerformance"};
constexpr XmlName stdDevPerformance{"stdDevPerformance"};
constexpr XmlName trainingSampleSize{"trainingSampleSize"};

}  // namespace

void ReadSubModelName(const DOMElement& modelElement, DocumentReading& reading) {
    reading.model.SetModelName(RequiredText(reading.transcoder, modelElement, attribute::modelName));
}

void ReadAssessment(const DOMElement& extension, DocumentReading& reading) {
    const double value = RequiredDouble(&extension, attribute::value);
    const XMLCh* name = BaseTranslator::GetAttribute(&extension, attribute::name);
    if (SameText(name, meanPerformance)) {
        reading.model.SetAssessmentMean(value);
    } else if (SameText(name, stdDevPerformance) || SameText(name, trainingSampleSize)) {
        reading.model.SetAssessmentStdDev(value);
    }
}

}  // namespace nbscore
