#include "framework/dictionary/FieldDeclarationReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/dictionary/DeclaredValueReader.h"
#include "framework/dictionary/IntervalReader.h"
#include "framework/dictionary/NumericDataType.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

constexpr XmlName optypeName = "optype";
constexpr XmlName dataTypeName = "dataType";

bool IsDeclaredBoolean(const xercesc::DOMElement* field) {
    const XMLCh* dataType = BaseTranslator::GetAttribute(field, dataTypeName);
    return dataType && BaseTranslator::IsEqual(dataType, "boolean");
}

/// Reads one declaration. What it throws has no place; the fault stands at the element that is being read.
class DeclarationReader {
public:
    DeclarationReader(const xercesc::DOMElement* fieldElement, const Transcoder& documentTranscoder)
        : field(fieldElement), transcoder(documentTranscoder), current(fieldElement) {}

    std::unique_ptr<BaseDictVar> Read(const std::string& name);
    const xercesc::DOMElement* GetCurrent() const { return current; }

private:
    ScoreDictVar::MeasureLevel ReadMeasureLevel(ScoreDictVar::StorageType storage);
    bool HasValidValue();

    const xercesc::DOMElement* field;
    const Transcoder& transcoder;
    const xercesc::DOMElement* current;
};

std::unique_ptr<BaseDictVar> DeclarationReader::Read(const std::string& name) {
    const ScoreDictVar::StorageType storage = ReadStorageType(field);
    auto variable = std::make_unique<BaseDictVar>(name, storage, ReadMeasureLevel(storage));
    current = field;
    variable->SetHoldsTruthValues(IsDeclaredBoolean(field));
    constexpr XmlName displayNameName = "displayName";
    variable->SetDisplayName(transcoder.transcodeTo(BaseTranslator::GetAttribute(field, displayNameName)));
    const DocumentWatch watch(*field);
    current = BaseTranslator::GetFirstChildElt(field);
    for (; current; current = BaseTranslator::GetNextSiblingElt(current)) {
        watch.Step();
        if (BaseTranslator::IsEqual(current->getNodeName(), "Value")) {
            ReadDeclaredValue(current, transcoder, *variable);
        } else if (BaseTranslator::IsEqual(current->getNodeName(), "Interval")) {
            variable->AddInterval(ReadInterval(current));
        }
    }
    return variable;
}

ScoreDictVar::MeasureLevel DeclarationReader::ReadMeasureLevel(ScoreDictVar::StorageType storage) {
    const XMLCh* optype = BaseTranslator::GetAttribute(field, optypeName);
    if (!optype) {
        const bool isContinuous = storage == ScoreDictVar::NumericStorage && !HasValidValue();
        return isContinuous ? ScoreDictVar::Continuous : ScoreDictVar::Categorical;
    }
    if (BaseTranslator::IsEqual(optype, "continuous")) return ScoreDictVar::Continuous;
    if (BaseTranslator::IsEqual(optype, "ordinal")) return ScoreDictVar::Ordinal;
    if (BaseTranslator::IsEqual(optype, "categorical")) return ScoreDictVar::Categorical;
    throw VeskException(VeskException::InconsistentDocument,
                        "\"" + ExcerptOf(optype) + "\" is no optype: continuous, ordinal or categorical.");
}

bool DeclarationReader::HasValidValue() {
    current = BaseTranslator::GetFirstChildElt(field);
    for (; current; current = BaseTranslator::GetNextSiblingElt(current)) {
        if (BaseTranslator::IsEqual(current->getNodeName(), "Value") &&
            ReadValueProperty(current) == ValueProperty::Valid) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::unique_ptr<BaseDictVar> ReadFieldDeclaration(const xercesc::DOMElement* field, const std::string& name,
                                                  const Transcoder& transcoder) {
    DeclarationReader reader(field, transcoder);
    try {
        return reader.Read(name);
    } catch (VeskException& fault) {
        fault.SetPlace(PlaceOf(reader.GetCurrent()));
        throw;
    }
}

std::unique_ptr<BaseDictVar> ReadFieldDeclaration(const xercesc::DOMElement* field, const std::string& name,
                                                  const Transcoder& transcoder,
                                                  std::optional<FieldFaults::Fault>& fault) {
    DeclarationReader reader(field, transcoder);
    try {
        return reader.Read(name);
    } catch (const VeskException& refusal) {
        fault = {reader.GetCurrent(), refusal};
        return std::make_unique<BaseDictVar>(name, ReadStorageType(field), ScoreDictVar::Categorical);
    }
}

ScoreDictVar::StorageType ReadStorageType(const xercesc::DOMElement* field) {
    const XMLCh* dataType = BaseTranslator::GetAttribute(field, dataTypeName);
    if (!dataType) {
        const XMLCh* optype = BaseTranslator::GetAttribute(field, optypeName);
        return optype && BaseTranslator::IsEqual(optype, "continuous") ? ScoreDictVar::NumericStorage
                                                                       : ScoreDictVar::StringStorage;
    }
    return IsNumericDataType(dataType) ? ScoreDictVar::NumericStorage : ScoreDictVar::StringStorage;
}

}  // namespace nbscore
