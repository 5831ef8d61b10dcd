#include "document/FieldUses.h"

#include <map>
#include <vector>

#include "document/FieldMentions.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {

FieldNames FindInputFields(const DOMElement& model) {
    FieldNames names;
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
        for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput)) {
            if (const XMLCh* const name = BaseTranslator::GetAttribute(input, attribute::fieldName)) names.insert(name);
        }
    }
    return names;
}

FieldNames FindFieldsOfExpressions(const DOMElement& root, const FieldNames& wanted) {
    std::multimap<XmlText, DOMElement*> derivedFields;
    for (const DOMElement* dictionary : ChildrenNamed(root, element::transformationDictionary)) {
        for (DOMElement* derivedField : ChildrenNamed(*dictionary, element::derivedField)) {
            const XMLCh* const name = BaseTranslator::GetAttribute(derivedField, attribute::name);
            if (name != nullptr) derivedFields.emplace(name, derivedField);
        }
    }
    FieldNames read;
    std::vector<XmlText> waiting(wanted.begin(), wanted.end());
    while (!waiting.empty()) {
        const auto [first, last] = derivedFields.equal_range(waiting.back());
        waiting.pop_back();
        for (auto field = first; field != last; ++field) {
            for (const FieldMention& mention : FindFieldMentions(*field->second)) {
                const XMLCh* const name = BaseTranslator::GetAttribute(mention.element, mention.attributeName);
                if (read.insert(name).second) waiting.emplace_back(name);
            }
        }
    }
    return read;
}

}  // namespace nbscore
