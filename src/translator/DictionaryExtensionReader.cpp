#include "translator/DictionaryExtensionReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

constexpr XmlName isSelfLearningTarget{"isSelfLearningTarget"};
constexpr XmlName trueText{"true"};

/// Exact in upper and lower case: "TRUE" marks nothing.
bool MarksTarget(const DOMElement* extension) {
    return SameText(BaseTranslator::GetAttribute(extension, attribute::name), isSelfLearningTarget) &&
           SameText(BaseTranslator::GetAttribute(extension, attribute::value), trueText);
}

bool IsMarkedAsTarget(const DOMElement& dataField) {
    const std::vector<const DOMElement*> extensions = DescendantsNamed(dataField, element::extension);
    return std::any_of(extensions.begin(), extensions.end(), MarksTarget);
}

}  // namespace

bool ReadDictionaryExtension(const Transcoder& transcoder, const DOMElement* dataDictionary, std::string& targetName) {
    if (dataDictionary == nullptr) {
        // The missing bracket and the blank are part of the text.
        throw VeskException(VeskException::UnexpectedElement, "<DataDictionary is required !!");
    }
    const DocumentWatch watch(*dataDictionary);
    for (const DOMElement* field = BaseTranslator::GetFirstChildElt(dataDictionary); field != nullptr;
         field = BaseTranslator::GetNextSiblingElt(field)) {
        watch.Step();
        // An Extension right inside the dictionary is refused as well, deliberately.
        RequireName(field, element::dataField, dataDictionary, VeskException::UnexpectedElement,
                    "<DataField> is required here!!");
        const std::string name = AttributeText(transcoder, *field, attribute::name);
        if (name.empty()) {
            throw RefusalAt(field, VeskException::UnexpectedElement, "<DataField>'s name can't be null string !!");
        }
        if (IsMarkedAsTarget(*field)) {
            targetName = name;
            return true;
        }
    }
    return false;
}

}  // namespace nbscore
