#include "document/FieldUses.h"

#include "translator/ElementNames.h"

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace nbscore {
namespace {

/// FieldRef, Discretize, NormContinuous and the others all say `field`.
void AddFieldsReadIn(const DOMElement& derivedField, FieldNames& names) {
    constexpr XmlName fieldAttribute{"field"};
    for (const DOMNode* node = NextInDocumentOrder(&derivedField, &derivedField); node != nullptr;
         node = NextInDocumentOrder(node, &derivedField)) {
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
        const auto* const element = static_cast<const DOMElement*>(node);
        if (const XMLCh* const name = BaseTranslator::GetAttribute(element, fieldAttribute)) names.insert(name);
    }
}

}  // namespace

FieldNames FindInputFields(const DOMElement& model) {
    FieldNames names;
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
        for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput)) {
            if (const XMLCh* const name = BaseTranslator::GetAttribute(input, attribute::fieldName)) names.insert(name);
        }
    }
    return names;
}

FieldNames FindFieldsOfExpressions(const DOMElement& root) {
    FieldNames names;
    for (const DOMElement* dictionary : ChildrenNamed(root, element::transformationDictionary)) {
        for (const DOMElement* derivedField : ChildrenNamed(*dictionary, element::derivedField))
            AddFieldsReadIn(*derivedField, names);
    }
    return names;
}

}  // namespace nbscore
