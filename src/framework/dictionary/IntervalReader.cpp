#include "framework/dictionary/IntervalReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

ValueInterval::Closure ReadClosure(const xercesc::DOMElement* interval) {
    constexpr XmlName closureName = "closure";
    const XMLCh* closure = BaseTranslator::GetAttribute(interval, closureName);
    if (!closure) throw AttributeLacking(interval, closureName);
    if (BaseTranslator::IsEqual(closure, "openOpen")) return ValueInterval::OpenOpen;
    if (BaseTranslator::IsEqual(closure, "openClosed")) return ValueInterval::OpenClosed;
    if (BaseTranslator::IsEqual(closure, "closedOpen")) return ValueInterval::ClosedOpen;
    if (BaseTranslator::IsEqual(closure, "closedClosed")) return ValueInterval::ClosedClosed;
    throw VeskException(
        VeskException::InconsistentDocument,
        "\"" + ExcerptOf(closure) + "\" is no closure: openOpen, openClosed, closedOpen or closedClosed.");
}

}  // namespace

ValueInterval ReadInterval(const xercesc::DOMElement* interval) {
    constexpr XmlName leftMarginName = "leftMargin";
    constexpr XmlName rightMarginName = "rightMargin";
    ValueInterval range;
    range.closure = ReadClosure(interval);
    if (const XMLCh* left = BaseTranslator::GetAttribute(interval, leftMarginName)) {
        range.leftMargin = BaseTranslator::VerifyDouble(left);
    }
    if (const XMLCh* right = BaseTranslator::GetAttribute(interval, rightMarginName)) {
        range.rightMargin = BaseTranslator::VerifyDouble(right);
    }
    return range;
}

}  // namespace nbscore
