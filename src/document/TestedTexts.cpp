#include "document/TestedTexts.h"

#include "document/OuterBlanks.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

using Texts = std::set<XmlText>;

void Add(const XMLCh* text, Texts& texts) {
    if (text != nullptr && WithoutOuterBlanks(text) != text) texts.insert(text);
}

void AddNamedResult(const XMLCh* name, Texts& texts) {
    constexpr std::u16string_view probability = u"probability_";
    if (name != nullptr && XmlText(name).starts_with(probability)) Add(name + probability.size(), texts);
}

void AddTestCases(const DOMElement& testCases, Texts& texts) {
    constexpr XmlName verificationFields{"VerificationFields"};
    constexpr XmlName verificationField{"VerificationField"};
    constexpr XmlName fieldAttribute{"field"};
    constexpr XmlName inlineTable{"InlineTable"};
    constexpr XmlName row{"row"};
    for (const DOMElement* list : ChildrenNamed(testCases, verificationFields)) {
        for (const DOMElement* field : ChildrenNamed(*list, verificationField))
            AddNamedResult(BaseTranslator::GetAttribute(field, fieldAttribute), texts);
    }
    for (const DOMElement* table : ChildrenNamed(testCases, inlineTable)) {
        for (const DOMElement* oneCase : ChildrenNamed(*table, row)) {
            for (const DOMElement* cell : ChildElements(*oneCase))
                Add(cell->getTextContent(), texts);
        }
    }
}

void AddOutput(const DOMElement& model, Texts& texts) {
    constexpr XmlName output{"Output"};
    constexpr XmlName outputField{"OutputField"};
    for (const DOMElement* list : ChildrenNamed(model, output)) {
        for (const DOMElement* field : ChildrenNamed(*list, outputField))
            Add(BaseTranslator::GetAttribute(field, attribute::value), texts);
    }
}

}  // namespace

Texts FindTestedTextsWithBlanks(const ModelsRead& models) {
    constexpr XmlName verification{"ModelVerification"};
    Texts texts;
    for (const DOMElement* model : models.elements) {
        const std::vector<DOMElement*> testCases = ChildrenNamed(*model, verification);
        for (const DOMElement* each : testCases)
            AddTestCases(*each, texts);
        if (!testCases.empty()) AddOutput(*model, texts);
    }
    return texts;
}

}  // namespace nbscore
