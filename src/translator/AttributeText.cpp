#include "translator/AttributeText.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"

using xercesc::DOMElement;

namespace nbscore {

std::string AttributeText(const Transcoder& transcoder, const DOMElement& element, const XMLCh* name) {
    return TextAt(&element, BaseTranslator::GetAttribute(&element, name), transcoder);
}

std::string RequiredText(const Transcoder& transcoder, const DOMElement& element, const XMLCh* name) {
    return TextAt(&element, BaseTranslator::GetAttributeForced(&element, name), transcoder);
}

}  // namespace nbscore
