#include "document/MeaninglessElements.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <string>

#include "document/ElementSteps.h"
#include "document/IgnoredInputs.h"
#include "document/ModelsRead.h"
#include "framework/NumberText.h"
#include "framework/xml/Utf8.h"
#include "translator/AssessmentNames.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

/// The element stays in memory until the document goes: its place is still asked for.
void LeaveOut(DOMElement* element, AdaptationLog& log) {
    log.Note(element, "<" + ExcerptOf(element->getNodeName()) + "> is left out: it means nothing for scoring");
    element->getParentNode()->removeChild(element);
}

void CleanDictionary(const DOMElement& dictionary, AdaptationLog& log) {
    constexpr XmlName taxonomy{"Taxonomy"};
    for (DOMElement* child : ChildElements(dictionary)) {
        if (IsNamed(child, element::extension) || IsNamed(child, taxonomy)) LeaveOut(child, log);
    }
}

bool StandsIn(const DOMElement& element, const DOMElement& top) {
    const xercesc::DOMNode* node = &element;
    while (node != nullptr && node != &top)
        node = node->getParentNode();
    return node != nullptr;
}

/// Inputs in an Extension are not read, but they do mean something.
bool HoldsInputs(const DOMElement& extension) {
    return !FindInputsAnywhere(extension).empty();
}

void LeaveExtensionsOut(DOMElement& top, AdaptationLog& log) {
    for (DOMElement* extension : DescendantsNamed(top, element::extension)) {
        // Otherwise it went with the one around it.
        if (StandsIn(*extension, top) && !HoldsInputs(*extension)) LeaveOut(extension, log);
    }
}

bool IsNumber(const XMLCh* text) {
    return text != nullptr && ReadNumber(Utf8Of(text)).has_value();
}

void CleanSubModel(const DOMElement& model, AdaptationLog& log) {
    for (DOMElement* extension : ChildrenNamed(model, element::extension)) {
        const bool isFigure = IsAssessmentName(BaseTranslator::GetAttribute(extension, attribute::name));
        if (isFigure || IsNumber(BaseTranslator::GetAttribute(extension, attribute::value))) continue;
        if (!HoldsInputs(*extension)) LeaveOut(extension, log);
    }
}

}  // namespace

void LeaveMeaninglessElementsOut(xercesc::DOMDocument& document, AdaptationLog& log) {
    const DOMElement& root = *document.getDocumentElement();
    for (const DOMElement* dictionary : ChildrenNamed(root, element::dataDictionary))
        CleanDictionary(*dictionary, log);
    const ModelsRead models = FindModelsRead(document);
    for (const DOMElement* model : models.elements) {
        if (!StandsIn(*model, root)) continue;
        if (models.selfLearning) CleanSubModel(*model, log);
        for (const DOMElement* inputs : ChildrenNamed(*model, element::bayesInputs)) {
            for (DOMElement* input : ChildrenNamed(*inputs, element::bayesInput))
                LeaveExtensionsOut(*input, log);
        }
        for (DOMElement* output : ChildrenNamed(*model, element::bayesOutput))
            LeaveExtensionsOut(*output, log);
    }
}

}  // namespace nbscore
