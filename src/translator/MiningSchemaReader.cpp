#include "translator/MiningSchemaReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"
#include "translator/EncoderFactory.h"
#include "translator/VendorExtension.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

constexpr XmlName activeUsage{"active"};
constexpr XmlName predictedUsage{"predicted"};

class SchemaReader {
public:
    SchemaReader(int modelIndexInDocument, DocumentReading& documentReading)
        : isFirstModel(modelIndexInDocument == 0), reading(documentReading) {}

    std::string Read(const DOMElement& schema);

private:
    void ReadMiningField(const DOMElement& field);
    void ReadActiveField(const ScoreDictVar& var, const std::string& name);
    void ReadPredictedField(const DOMElement& field, const ScoreDictVar& var, const std::string& name);
    void ReadDerivedFields(const DOMElement& extension);

    const bool isFirstModel;
    DocumentReading& reading;
    std::string targetName;
    bool targetFound = false;
};

std::string SchemaReader::Read(const DOMElement& schema) {
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&schema); child != nullptr;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        reading.watch.Step();
        if (!HasName(child, element::extension)) {
            ReadMiningField(*child);  // whatever its name
        } else if (reading.derivedFields != nullptr) {
            ReadDerivedFields(*child);
        }
    }
    return targetName;
}

void SchemaReader::ReadMiningField(const DOMElement& field) {
    const std::string name = RequiredText(reading.transcoder, field, attribute::name);
    const XMLCh* usage = BaseTranslator::GetAttribute(&field, attribute::usageType);
    const ScoreDictVar* var = reading.dictionary.GetVar(name);
    if (var == nullptr) throw RefusalAt(&field, VeskException::InvalidContent, name + " is not defined!");
    if (isFirstModel && reading.model.GetModel().GetVarRole(name) != ScoreModel::NoRole) {
        throw RefusalAt(&field, VeskException::UnexpectedElement, name + " is redefined!");
    }
    if (SameText(usage, nullptr) || SameText(usage, activeUsage)) {
        ReadActiveField(*var, name);
    } else if (SameText(usage, predictedUsage)) {
        ReadPredictedField(field, *var, name);
    }
}

void SchemaReader::ReadActiveField(const ScoreDictVar& var, const std::string& name) {
    reading.faults.RequireSound(name);
    ScoreModel& model = reading.model.GetModel();
    if (model.GetVarRole(name) == ScoreModel::NoRole) model.SetVarRole(&var, ScoreModel::PredictorRole);
    reading.activeFields.Append(name);
}

void SchemaReader::ReadPredictedField(const DOMElement& field, const ScoreDictVar& var, const std::string& name) {
    reading.faults.RequireSound(name);
    targetName = name;
    if (!isFirstModel) return;
    if (targetFound) {
        // By pointer on purpose: see the header.
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference,cert-err09-cpp,cert-err61-cpp): the same
        throw new VeskException(RefusalAt(&field, VeskException::InconsistentDocument, "Only one target is allowed."));
    }
    reading.model.GetModel().SetVarRole(&var, ScoreModel::TargetRole);
    reading.model.SetTargetVar(&var);
    targetFound = true;
    reading.cells.Take(field, CellsOfEncoder(var));
    reading.target.encoder = MakeCategoricalEncoder(var, reading.watch);
}

void SchemaReader::ReadDerivedFields(const DOMElement& extension) {
    if (!SameText(BaseTranslator::GetAttribute(&extension, attribute::extender), vendor_extension::extender) ||
        !SameText(BaseTranslator::GetAttribute(&extension, attribute::name), vendor_extension::derivedFields)) {
        return;
    }
    const std::vector<const DOMElement*> fields = DescendantsNamed(extension, element::miningField);
    if (fields.empty()) {
        throw RefusalAt(&extension, VeskException::InvalidContent, "<MiningField> is required!");
    }
    for (const DOMElement* field : fields) {
        const std::string name = RequiredText(reading.transcoder, *field, attribute::name);
        if (reading.derivedFields->GetVar(name) == nullptr) {
            throw RefusalAt(field, VeskException::InvalidContent, name + " is not defined!");
        }
        reading.activeFields.Append(name);
    }
}

}  // namespace

std::string ReadMiningSchema(const DOMElement& schema, int modelIndex, DocumentReading& reading) {
    return SchemaReader(modelIndex, reading).Read(schema);
}

}  // namespace nbscore
