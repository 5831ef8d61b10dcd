#include "document/FieldMentions.h"

#include <algorithm>

#include "document/ElementSteps.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

struct Kind {
    const XMLCh* elementName;
    const XMLCh* attributeName;
};

constexpr XmlName fieldRef{"FieldRef"};
constexpr XmlName normContinuous{"NormContinuous"};
constexpr XmlName normDiscrete{"NormDiscrete"};
constexpr XmlName fieldColumnPair{"FieldColumnPair"};
constexpr XmlName textIndex{"TextIndex"};
constexpr XmlName field{"field"};
constexpr XmlName textField{"textField"};

constexpr Kind kinds[] = {{fieldRef, field},        {normContinuous, field},
                          {normDiscrete, field},    {element::discretize, field},
                          {fieldColumnPair, field}, {textIndex, textField}};

/// Null where an element of this kind names no field.
const XMLCh* FieldAttributeOf(const DOMElement& element) {
    const auto* const kind =
        std::ranges::find_if(kinds, [&element](const Kind& each) { return IsNamed(&element, each.elementName); });
    return kind == std::end(kinds) ? nullptr : kind->attributeName;
}

}  // namespace

std::vector<FieldMention> FindFieldMentions(DOMElement& derivedField) {
    constexpr XmlName inlineTable{"InlineTable"};
    std::vector<FieldMention> mentions;
    std::vector<DOMElement*> waiting = {&derivedField};
    while (!waiting.empty()) {
        DOMElement* const element = waiting.back();
        waiting.pop_back();
        if (IsNamed(element, element::extension) || IsNamed(element, inlineTable)) continue;
        const XMLCh* const attributeName = FieldAttributeOf(*element);
        if (attributeName != nullptr && BaseTranslator::GetAttribute(element, attributeName) != nullptr) {
            mentions.push_back({element, attributeName});
        }
        const std::vector<DOMElement*> children = ChildElements(*element);
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return mentions;
}

}  // namespace nbscore
