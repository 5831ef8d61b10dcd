#include "document/SchemaFields.h"

#include "document/ElementSteps.h"
#include "translator/ElementNames.h"
#include "translator/VendorExtension.h"

using xercesc::DOMElement;

namespace nbscore {

std::vector<DOMElement*> FindSchemaFields(const DOMElement& schema) {
    std::vector<DOMElement*> fields = ChildrenNamed(schema, element::miningField);
    for (DOMElement* extension : ChildrenNamed(schema, element::extension)) {
        const bool listsDerived =
            HoldsText(BaseTranslator::GetAttribute(extension, attribute::extender), vendor_extension::extender) &&
            HoldsText(BaseTranslator::GetAttribute(extension, attribute::name), vendor_extension::derivedFields);
        if (!listsDerived) continue;
        const std::vector<DOMElement*> derived = DescendantsNamed(*extension, element::miningField);
        fields.insert(fields.end(), derived.begin(), derived.end());
    }
    return fields;
}

}  // namespace nbscore
