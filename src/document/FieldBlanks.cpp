#include "document/FieldBlanks.h"

#include <xercesc/dom/DOMDocument.hpp>

#include "document/FieldMentions.h"
#include "document/OuterBlanks.h"
#include "document/TestedTexts.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

namespace nbscore {

using xercesc::DOMElement;

namespace {

constexpr XmlName declaredValue{"Value"};

/// Such values say what texts of cases look like, and stay as they are.
bool IsStandInValue(const DOMElement* value) {
    constexpr XmlName property{"property"};
    const XMLCh* const text = BaseTranslator::GetAttribute(value, property);
    return text != nullptr && !BaseTranslator::IsEqual(text, "valid");
}

}  // namespace

std::vector<DOMElement*> FindValidValues(const DOMElement& field) {
    std::vector<DOMElement*> values = ChildrenNamed(field, declaredValue);
    std::erase_if(values, IsStandInValue);
    return values;
}

FieldBlanks::FieldBlanks(xercesc::DOMDocument& document, const ModelsRead& models)
    : testedTexts(FindTestedTextsWithBlanks(models)) {
    const DOMElement& root = *document.getDocumentElement();
    for (const DOMElement* dictionary : ChildrenNamed(root, element::dataDictionary)) {
        for (const DOMElement* field : ChildrenNamed(*dictionary, element::dataField))
            Declare(*field, false);
    }
    for (const DOMElement* dictionary : ChildrenNamed(root, element::transformationDictionary)) {
        for (DOMElement* field : ChildrenNamed(*dictionary, element::derivedField)) {
            Declare(*field, true);
            const XMLCh* const reader = BaseTranslator::GetAttribute(field, attribute::name);
            for (const FieldMention& mention : FindFieldMentions(*field)) {
                const XMLCh* const name = BaseTranslator::GetAttribute(mention.element, mention.attributeName);
                if (reader != nullptr) fields[WithoutOuterBlanks(name)].reader = reader;
            }
        }
    }
    for (const DOMElement* model : models.elements)
        LearnValues(*model);
}

void FieldBlanks::Declare(const DOMElement& element, bool isDerived) {
    const XMLCh* const name = BaseTranslator::GetAttribute(&element, attribute::name);
    if (name == nullptr) return;
    Field& field = fields[WithoutOuterBlanks(name)];
    field.writtenNames.insert(name);
    field.isDerived = field.isDerived || isDerived;
    field.isText = field.isText || ReadStorageType(&element) == ScoreDictVar::StringStorage;
    DeclareValues(element, field);
}

void FieldBlanks::DeclareValues(const DOMElement& element, Field& field) {
    for (const DOMElement* value : ChildrenNamed(element, declaredValue)) {
        const XMLCh* const text = BaseTranslator::GetAttribute(value, attribute::value);
        if (text == nullptr) continue;
        if (IsStandInValue(value)) {
            field.standIns.insert(text);
        } else {
            field.declaresValues = true;
            field.isTested = field.isTested || testedTexts.contains(text);
        }
    }
}

void FieldBlanks::LearnValues(const DOMElement& model) {
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
        for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput)) {
            const XMLCh* const name = BaseTranslator::GetAttribute(input, attribute::fieldName);
            const auto field = name == nullptr ? fields.end() : fields.find(WithoutOuterBlanks(name));
            if (field == fields.end() || field->second.declaresValues) continue;
            for (const DOMElement* pair : ChildrenNamed(*input, element::pairCounts)) {
                const XMLCh* const text = BaseTranslator::GetAttribute(pair, attribute::value);
                if (text != nullptr && testedTexts.contains(text)) field->second.isTested = true;
            }
        }
    }
}

bool FieldBlanks::KnowField(const XmlText& name) const {
    const auto found = fields.find(name);
    return found != fields.end() && !found->second.writtenNames.empty();
}

bool FieldBlanks::TellFieldsApart(const XmlText& name) const {
    const auto found = fields.find(name);
    return found != fields.end() && found->second.isDerived && found->second.writtenNames.size() > 1;
}

std::string FieldBlanks::WhyThoseOfValuesStay(const XmlText& name) const {
    const auto found = fields.find(name);
    if (found == fields.end() || !found->second.isText) return {};
    if (found->second.isDerived) return "its expression may give texts with blanks";
    if (found->second.isTested) return "test cases of the document name one with them";
    if (found->second.reader.empty()) return {};
    return "the derived field \"" + ExcerptOf(found->second.reader.c_str()) +
           "\" reads it, and may tell texts with blanks from others";
}

bool FieldBlanks::IsStandIn(const XmlText& name, const XmlText& text) const {
    const auto found = fields.find(name);
    return found != fields.end() && found->second.standIns.contains(text);
}

}  // namespace nbscore
