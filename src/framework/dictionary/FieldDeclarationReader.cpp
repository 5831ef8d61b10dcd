#include "framework/dictionary/FieldDeclarationReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/dictionary/DeclaredValueReader.h"
#include "framework/dictionary/IntervalReader.h"
#include "framework/dictionary/NumericDataType.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

constexpr XmlName optypeName = "optype";
constexpr XmlName dataTypeName = "dataType";

bool HasValidValue(const xercesc::DOMElement* field) {
    const xercesc::DOMElement* child = BaseTranslator::GetFirstChildElt(field);
    for (; child; child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::IsEqual(child->getNodeName(), "Value") &&
            ReadValueProperty(child) == ValueProperty::Valid) {
            return true;
        }
    }
    return false;
}

bool IsDeclaredBoolean(const xercesc::DOMElement* field) {
    const XMLCh* dataType = BaseTranslator::GetAttribute(field, dataTypeName);
    return dataType && BaseTranslator::IsEqual(dataType, "boolean");
}

ScoreDictVar::MeasureLevel ReadMeasureLevel(const xercesc::DOMElement* field, ScoreDictVar::StorageType storage) {
    const XMLCh* optype = BaseTranslator::GetAttribute(field, optypeName);
    if (!optype) {
        const bool isContinuous = storage == ScoreDictVar::NumericStorage && !HasValidValue(field);
        return isContinuous ? ScoreDictVar::Continuous : ScoreDictVar::Categorical;
    }
    if (BaseTranslator::IsEqual(optype, "continuous")) return ScoreDictVar::Continuous;
    if (BaseTranslator::IsEqual(optype, "ordinal")) return ScoreDictVar::Ordinal;
    if (BaseTranslator::IsEqual(optype, "categorical")) return ScoreDictVar::Categorical;
    throw RefusalAt(field, VeskException::InconsistentDocument,
                    "\"" + ExcerptOf(optype) + "\" is no optype: continuous, ordinal or categorical.");
}

}  // namespace

std::unique_ptr<BaseDictVar> ReadFieldDeclaration(const xercesc::DOMElement* field, const std::string& name,
                                                  const Transcoder& transcoder) {
    const ScoreDictVar::StorageType storage = ReadStorageType(field);
    auto variable = std::make_unique<BaseDictVar>(name, storage, ReadMeasureLevel(field, storage));
    variable->SetHoldsTruthValues(IsDeclaredBoolean(field));
    constexpr XmlName displayNameName = "displayName";
    variable->SetDisplayName(TextAt(field, BaseTranslator::GetAttribute(field, displayNameName), transcoder));
    const xercesc::DOMElement* child = BaseTranslator::GetFirstChildElt(field);
    for (; child; child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::IsEqual(child->getNodeName(), "Value")) {
            ReadDeclaredValue(child, transcoder, *variable);
        } else if (BaseTranslator::IsEqual(child->getNodeName(), "Interval")) {
            variable->AddInterval(ReadInterval(child));
        }
    }
    return variable;
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
