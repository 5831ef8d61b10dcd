#include "document/FieldBlanks.h"

#include <xercesc/dom/DOMDocument.hpp>

#include "document/FieldMentions.h"
#include "document/OuterBlanks.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

namespace nbscore {

using xercesc::DOMElement;

FieldBlanks::FieldBlanks(xercesc::DOMDocument& document) {
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
}

void FieldBlanks::Declare(const DOMElement& element, bool isDerived) {
    const XMLCh* const name = BaseTranslator::GetAttribute(&element, attribute::name);
    if (name == nullptr) return;
    Field& field = fields[WithoutOuterBlanks(name)];
    field.writtenNames.insert(name);
    field.isDerived = field.isDerived || isDerived;
    field.isText = field.isText || ReadStorageType(&element) == ScoreDictVar::StringStorage;
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
    if (found->second.reader.empty()) return {};
    return "the derived field \"" + ExcerptOf(found->second.reader.c_str()) +
           "\" reads it, and may tell texts with blanks from others";
}

}  // namespace nbscore
