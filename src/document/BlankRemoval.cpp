#include "document/BlankRemoval.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <map>
#include <string>
#include <utility>

#include "document/Blanks.h"
#include "document/ElementSteps.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using Elements = std::vector<DOMElement*>;

/// Takes the blanks off one attribute of elements that stand beside one another and are told apart by it.
void TrimAll(const Elements& elements, const XMLCh* attributeName, AdaptationLog& log) {
    std::map<XmlText, XmlText> originals;
    for (DOMElement* element : elements) {
        const XMLCh* value = BaseTranslator::GetAttribute(element, attributeName);
        if (value == nullptr) continue;
        const XmlText original = value;
        const XmlText trimmed = WithoutBlanks(value);
        const auto known = originals.emplace(trimmed, original).first;
        if (known->second != original) {
            throw log.Refusal(element, "Without the blanks around it, \"" + ExcerptOf(value) +
                                           "\" would be the same as \"" + ExcerptOf(known->second.c_str()) + "\".");
        }
        if (trimmed == original) continue;
        log.Note(element, "the blanks around " + Utf8Of(attributeName) + " \"" + ExcerptOf(value) + "\" are taken off");
        element->setAttribute(attributeName, trimmed.c_str());
    }
}

/// Of counts: a category is told apart within its own list.
void TrimCounts(const DOMElement& countsParent, AdaptationLog& log) {
    for (const DOMElement* counts : ChildrenNamed(countsParent, element::targetValueCounts))
        TrimAll(ChildrenNamed(*counts, element::targetValueCount), attribute::value, log);
}

void TrimInputs(const DOMElement& inputs, AdaptationLog& log) {
    const Elements all = ChildrenNamed(inputs, element::bayesInput);
    for (DOMElement* input : all) {
        TrimAll({input}, attribute::fieldName, log);
        const Elements pairs = ChildrenNamed(*input, element::pairCounts);
        TrimAll(pairs, attribute::value, log);
        for (const DOMElement* pair : pairs)
            TrimCounts(*pair, log);
    }
}

void TrimModel(const DOMElement& model, AdaptationLog& log) {
    for (const DOMElement* schema : ChildrenNamed(model, element::miningSchema))
        TrimAll(ChildrenNamed(*schema, element::miningField), attribute::name, log);
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs))
        TrimInputs(*inputs, log);
    for (DOMElement* output : ChildrenNamed(model, element::bayesOutput)) {
        TrimAll({output}, attribute::fieldName, log);
        TrimCounts(*output, log);
    }
}

/// Derived fields may use any name and give any text, blanks included: nothing can be taken off for sure.
bool HasDerivedFields(xercesc::DOMDocument& document) {
    return !DescendantsNamed(document, element::transformationDictionary).empty();
}

/// Values that stand for missing or invalid ones say what texts of cases look like: they stay as they are.
Elements ValidOnes(Elements values) {
    std::erase_if(values, [](const DOMElement* value) {
        constexpr XmlName property{"property"};
        return BaseTranslator::GetAttribute(value, property) != nullptr;
    });
    return values;
}

}  // namespace

void TakeBlanksOff(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log) {
    if (HasDerivedFields(document)) return;
    constexpr XmlName declaredValue{"Value"};
    for (const DOMElement* dictionary : ChildrenNamed(*document.getDocumentElement(), element::dataDictionary)) {
        const Elements fields = ChildrenNamed(*dictionary, element::dataField);
        TrimAll(fields, attribute::name, log);
        for (const DOMElement* field : fields)
            TrimAll(ValidOnes(ChildrenNamed(*field, declaredValue)), attribute::value, log);
    }
    for (const DOMElement* model : models.elements)
        TrimModel(*model, log);
}

}  // namespace nbscore
