#include "document/OutputReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <utility>

#include "document/ElementSteps.h"
#include "framework/BaseTranslator.h"
#include "framework/SeededHash.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName outputElement{"Output"};
constexpr XmlName outputFieldElement{"OutputField"};
constexpr XmlName nameAttribute{"name"};
constexpr XmlName featureAttribute{"feature"};
constexpr XmlName valueAttribute{"value"};
constexpr XmlName targetFieldAttribute{"targetField"};
constexpr XmlName segmentAttribute{"segmentId"};
constexpr XmlName rankAttribute{"rank"};

OutputDeclaration ReadOutputField(const DOMElement& element) {
    OutputDeclaration output;
    output.name = AttributeOr(element, nameAttribute, "");
    output.feature = AttributeOr(element, featureAttribute, output.feature);
    output.value = AttributeOr(element, valueAttribute, "");
    output.targetField = AttributeOr(element, targetFieldAttribute, "");
    output.segment = AttributeOr(element, segmentAttribute, "");
    if (const XMLCh* const rank = BaseTranslator::GetAttribute(&element, rankAttribute)) {
        output.rank = IntAt(&element, rank);
    }
    return output;
}

}  // namespace

std::vector<OutputDeclaration> ReadOutput(const DOMElement& modelElement) {
    std::vector<OutputDeclaration> outputs;
    const DOMElement* const parent = OnlyChildNamed(modelElement, outputElement);
    if (parent == nullptr) return outputs;
    SeededSet<std::string> names;
    for (const DOMElement* element : ChildrenNamed(*parent, outputFieldElement)) {
        OutputDeclaration output = ReadOutputField(*element);
        if (output.name.empty()) continue;
        if (!names.insert(output.name).second) {
            throw RefusalAt(element, VeskException::InconsistentDocument,
                            "The output field \"" + ExcerptOf(BaseTranslator::GetAttribute(element, nameAttribute)) +
                                "\" is declared twice.");
        }
        outputs.push_back(std::move(output));
    }
    return outputs;
}

}  // namespace nbscore
