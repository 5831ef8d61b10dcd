#include "framework/transform/ExpressionReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/transform/ConstantExpression.h"
#include "framework/transform/FieldRefExpression.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace nbscore {

std::unique_ptr<Expression> ReadExpression(const xercesc::DOMElement* element, FieldScope& scope) {
    const XMLCh* kind = element->getNodeName();
    if (BaseTranslator::IsEqual(kind, "FieldRef")) return ReadFieldRef(element, scope);
    if (BaseTranslator::IsEqual(kind, "Constant")) return ReadConstant(element, scope.GetTranscoder());
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "The expression <" + ExcerptOf(kind) + "> is not supported.");
}

}  // namespace nbscore
