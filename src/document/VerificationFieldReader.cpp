#include "document/VerificationFieldReader.h"
#include "framework/xml/PmmlPrefix.h"

#include <xercesc/dom/DOMElement.hpp>

#include <utility>

#include "document/ElementSteps.h"
#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName verificationFieldElement{"VerificationField"};
constexpr XmlName fieldAttribute{"field"};
constexpr XmlName columnAttribute{"column"};
constexpr XmlName precisionAttribute{"precision"};
constexpr XmlName zeroThresholdAttribute{"zeroThreshold"};

double ReadTolerance(const DOMElement& element, const XMLCh* name, double absent) {
    const double tolerance = NumberAttributeOr(element, name, absent);
    if (tolerance >= 0.0) return tolerance;
    throw RefusalAt(&element, VeskException::InvalidContent, "The " + Utf8Of(name) + " may not be negative.");
}

std::string ReadFieldName(const DOMElement& element) {
    const XMLCh* const name = BaseTranslator::GetAttribute(&element, fieldAttribute);
    if (name != nullptr && *name != 0) return Utf8Of(name);
    throw RefusalAt(&element, VeskException::MissingAttribute, "A <VerificationField> must say its field.");
}

}  // namespace

void VerificationFieldReader::Read(const DOMElement& fieldsElement, PlacesInOrder& places) {
    for (const DOMElement* element : ChildrenNamed(fieldsElement, verificationFieldElement))
        ReadField(*element, places);
    if (fields.empty()) {
        throw RefusalAt(&fieldsElement, VeskException::UnexpectedElement,
                        "At least one <VerificationField> is required.");
    }
}

void VerificationFieldReader::ReadField(const DOMElement& element, PlacesInOrder& places) {
    VerificationField field;
    field.name = ReadFieldName(element);
    field.precision = ReadTolerance(element, precisionAttribute, field.precision);
    field.zeroThreshold = ReadTolerance(element, zeroThresholdAttribute, field.zeroThreshold);
    const PlacesInOrder::LineAndColumn place = places.Find(element);
    field.line = place.line;
    field.column = place.column;

    const XMLCh* const name = BaseTranslator::GetAttribute(&element, fieldAttribute);
    if (!names.emplace(field.name, fields.size()).second) {
        throw RefusalAt(&element, VeskException::InconsistentDocument,
                        "The verification field \"" + ExcerptOf(name) + "\" is there twice.");
    }
    const XMLCh* const ownColumn = BaseTranslator::GetAttribute(&element, columnAttribute);
    const XMLCh* const column = WithoutPrefix(ownColumn == nullptr ? name : ownColumn);
    if (!columns.emplace(Utf8Of(column), fields.size()).second) {
        throw RefusalAt(&element, VeskException::InconsistentDocument,
                        "The column \"" + ExcerptOf(column) + "\" is given to two verification fields.");
    }
    fields.push_back(std::move(field));
}

}  // namespace nbscore
