#include "framework/transform/DefineFunctionReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/SeededHash.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ExpressionReader.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

constexpr XmlName nameName = "name";

bool IsParameter(const DOMElement* element) {
    return BaseTranslator::IsEqual(element->getNodeName(), "ParameterField");
}

std::string NameOf(const DOMElement* element, const Transcoder& transcoder) {
    return TextAt(element, BaseTranslator::GetAttributeForced(element, nameName), transcoder);
}

}  // namespace

std::string FunctionForMessage(const DOMElement* element) {
    return "The function \"" + ExcerptOf(BaseTranslator::GetAttributeForced(element, nameName)) + "\"";
}

std::unique_ptr<UserFunction> ReadFunctionDeclaration(const DOMElement* element, const Transcoder& transcoder) {
    auto function = std::make_unique<UserFunction>();
    function->name = NameOf(element, transcoder);
    function->kind = DataTypeOf(element);
    SeededSet<std::string> names;
    for (const DOMElement* child : ChildrenOf(element)) {
        if (!IsParameter(child)) continue;
        function->parameters.push_back({NameOf(child, transcoder), DataTypeOf(child)});
        if (names.insert(function->parameters.back().name).second) continue;
        throw RefusalAt(child, VeskException::InconsistentDocument,
                        FunctionForMessage(element) + " has two parameters \"" +
                            ExcerptOf(BaseTranslator::GetAttribute(child, nameName)) + "\".");
    }
    if (!function->parameters.empty()) return function;
    throw RefusalAt(element, VeskException::UnexpectedElement,
                    FunctionForMessage(element) + " has no <ParameterField>.");
}

std::unique_ptr<const Expression> ReadFunctionBody(const DOMElement* element, FieldScope& scope) {
    const DOMElement* body = nullptr;
    for (const DOMElement* child : ChildrenOf(element)) {
        if (IsParameter(child)) continue;
        if (body) throw UnexpectedChild(child, "<DefineFunction> behind its expression");
        body = child;
    }
    if (body) return ReadExpression(body, scope);
    throw RefusalAt(element, VeskException::UnexpectedElement, FunctionForMessage(element) + " has no expression.");
}

}  // namespace nbscore
