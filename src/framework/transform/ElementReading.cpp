#include "framework/transform/ElementReading.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/dictionary/NumericDataType.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

VeskException NoSuchWord(const DOMElement* element, const XMLCh* name, const XMLCh* word,
                         std::span<const std::string_view> words) {
    std::string message = "\"" + ExcerptOf(word) + "\" is no \"" + ExcerptOf(name) + "\" of " + TagOf(element) + ": ";
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) message += i + 1 < words.size() ? ", " : " or ";
        message += words[i];
    }
    return RefusalAt(element, VeskException::InvalidContent, message + ".");
}

}  // namespace

std::vector<const DOMElement*> ChildrenOf(const DOMElement* element) {
    std::vector<const DOMElement*> children;
    const DocumentWatch watch(*element);
    const DOMElement* child = BaseTranslator::GetFirstChildElt(element);
    for (; child != nullptr; child = BaseTranslator::GetNextSiblingElt(child)) {
        watch.Step();
        if (!BaseTranslator::IsEqual(child->getNodeName(), "Extension")) children.push_back(child);
    }
    return children;
}

VeskException UnexpectedChild(const DOMElement* child, const std::string& parent) {
    return RefusalAt(child, VeskException::UnexpectedElement, TagOf(child) + " is not expected in " + parent + ".");
}

std::string TagOf(const DOMElement* element) {
    return "<" + ExcerptOf(element->getNodeName()) + ">";
}

std::basic_string<XMLCh> TextIn(const DOMElement* element) {
    std::basic_string<XMLCh> text;
    for (const DOMNode* node = element->getFirstChild(); node; node = node->getNextSibling()) {
        const bool isText =
            node->getNodeType() == DOMNode::TEXT_NODE || node->getNodeType() == DOMNode::CDATA_SECTION_NODE;
        if (isText) text += node->getNodeValue();
    }
    return text;
}

ValueKind DataTypeOf(const DOMElement* element) {
    constexpr XmlName dataTypeName = "dataType";
    const XMLCh* dataType = BaseTranslator::GetAttribute(element, dataTypeName);
    if (!dataType) return ValueKind::Any;
    if (IsNumericDataType(dataType)) return ValueKind::Number;
    return BaseTranslator::IsEqual(dataType, "boolean") ? ValueKind::Truth : ValueKind::Text;
}

ExpressionValue WrittenValue(const DOMElement* element, const XMLCh* text, ValueKind wanted,
                             const Transcoder& transcoder) {
    if (wanted == ValueKind::Number) return DoubleAt(element, text);
    return TextAt(element, text, transcoder);
}

ExpressionValue WrittenAttribute(const DOMElement* element, const XMLCh* name, ValueKind wanted,
                                 const Transcoder& transcoder) {
    const XMLCh* text = BaseTranslator::GetAttribute(element, name);
    return text ? WrittenValue(element, text, wanted, transcoder) : ExpressionValue();
}

ExpressionValue AttributeOfKind(const DOMElement* element, const XMLCh* name, ValueKind kind,
                                const Transcoder& transcoder) {
    const XMLCh* text = BaseTranslator::GetAttribute(element, name);
    return text ? ReadAs(kind, TextAt(element, text, transcoder)) : ExpressionValue();
}

std::optional<bool> FlagAttribute(const DOMElement* element, const XMLCh* name) {
    static constexpr std::string_view words[] = {"true", "1", "false", "0"};
    if (!BaseTranslator::GetAttribute(element, name)) return std::nullopt;
    return WordAttribute(element, name, words) < 2;
}

std::size_t WordAttribute(const DOMElement* element, const XMLCh* name, std::span<const std::string_view> words) {
    const XMLCh* word = BaseTranslator::GetAttribute(element, name);
    if (!word) return 0;
    const auto found =
        std::ranges::find_if(words, [word](std::string_view candidate) { return EqualsUtf8(word, candidate); });
    if (found == words.end()) throw NoSuchWord(element, name, word, words);
    return static_cast<std::size_t>(found - words.begin());
}

}  // namespace nbscore
