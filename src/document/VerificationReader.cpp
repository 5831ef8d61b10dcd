#include "document/VerificationReader.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <string>
#include <utility>

#include "document/ElementSteps.h"
#include "document/ModelsRead.h"
#include "document/OutputReader.h"
#include "document/VerificationFieldReader.h"
#include "document/VerificationRowReader.h"
#include "framework/BaseTranslator.h"
#include "framework/CountedNoun.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/ElementPaths.h"
#include "framework/xml/PlacesInOrder.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName verificationElement{"ModelVerification"};
constexpr XmlName fieldsElement{"VerificationFields"};
constexpr XmlName tableElement{"InlineTable"};
constexpr XmlName locatorElement{"TableLocator"};
constexpr XmlName rowElement{"row"};
constexpr XmlName recordCountAttribute{"recordCount"};
constexpr XmlName fieldCountAttribute{"fieldCount"};

struct PlacedRow {
    const DOMElement* element;
    PlacesInOrder::LineAndColumn place;
};

const DOMElement& RequirePart(const DOMElement& verification, const XMLCh* name) {
    if (const DOMElement* const part = OnlyChildNamed(verification, name)) return *part;
    throw RefusalAt(&verification, VeskException::UnexpectedElement,
                    "<" + Utf8Of(name) + "> is required in <ModelVerification>.");
}

const DOMElement& RequireTable(const DOMElement& verification) {
    if (const DOMElement* const locator = BaseTranslator::GetChildByTag(&verification, locatorElement)) {
        throw RefusalAt(locator, VeskException::UnsupportedExpression,
                        "<TableLocator> is not supported: test cases stand in an <InlineTable>.");
    }
    return RequirePart(verification, tableElement);
}

std::vector<PlacedRow> CollectRows(const DOMElement& table, PlacesInOrder& places) {
    std::vector<PlacedRow> rows;
    for (const DOMElement* row : ChildrenNamed(table, rowElement))
        rows.push_back({row, places.Find(*row)});
    return rows;
}

/// @param counted the noun of what is counted.
void RequireTrueCount(const DOMElement& verification, const XMLCh* attribute, std::size_t count,
                      const std::string& counted) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&verification, attribute);
    if (text == nullptr) return;
    const int declared = IntAt(&verification, text);
    if (declared >= 0 && static_cast<std::size_t>(declared) == count) return;
    throw RefusalAt(&verification, VeskException::InconsistentDocument,
                    "The " + Utf8Of(attribute) + " is " + std::to_string(declared) + ", and there " +
                        (count == 1 ? "is " : "are ") + CountedNoun(count, counted) + ".");
}

/// Rows may stand in front of the fields that they belong to, and places are found in document order only: so rows
/// are collected with their places as they stand, and read when the fields are known.
VerificationSuite ReadModelVerification(const DOMElement& verification, PlacesInOrder& places, ElementPaths& paths) {
    const DOMElement& fields = RequirePart(verification, fieldsElement);
    const DOMElement& table = RequireTable(verification);
    VerificationFieldReader fieldReader;
    std::vector<PlacedRow> rows;
    for (const DOMElement* part : ChildElements(verification)) {
        if (part == &fields) fieldReader.Read(fields, places);
        if (part == &table) rows = CollectRows(table, places);
    }
    RequireTrueCount(verification, recordCountAttribute, rows.size(), "row");
    RequireTrueCount(verification, fieldCountAttribute, fieldReader.GetFields().size(), "verification field");

    VerificationSuite suite;
    suite.fields = fieldReader.GetFields();
    suite.fieldsPath = paths.Find(fields);
    suite.rowsPath = paths.Find(table);
    VerificationRowReader rowReader(fieldReader.GetColumns());
    const DocumentWatch watch(verification);
    for (const PlacedRow& row : rows) {
        watch.Step();
        suite.rows.push_back(rowReader.Read(*row.element, row.place));
    }
    suite.unusedColumns = rowReader.TakeUnusedColumns();
    return suite;
}

}  // namespace

std::vector<VerificationSuite> ReadVerificationSuites(xercesc::DOMDocument& document) {
    const ModelsRead models = FindModelsRead(document);
    std::vector<VerificationSuite> suites;
    PlacesInOrder places(document);
    ElementPaths paths;
    for (std::size_t i = 0; i < models.elements.size(); ++i) {
        const DOMElement& model = *models.elements[i];
        const DOMElement* const verification = OnlyChildNamed(model, verificationElement);
        if (verification == nullptr) continue;
        suites.push_back(ReadModelVerification(*verification, places, paths));
        suites.back().outputs = ReadOutput(model);
        suites.back().modelIndex = i;
    }
    return suites;
}

}  // namespace nbscore
