#include "framework/transform/DefineFunctionReader.h"

#include <string>
#include <utility>

#include "framework/SeededHash.h"
#include "framework/document/Refusal.h"
#include "framework/document/Utf8.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ExpressionReader.h"

namespace nbscore {
namespace {

bool IsParameter(Element element) {
    return element.Is(Name::ParameterField);
}

std::string NameOf(Element element, const Transcoder& transcoder) {
    return TextAt(element, RequiredAttribute(element, Name::name), transcoder);
}

}  // namespace

std::string FunctionForMessage(Element element) {
    return "The function \"" + ExcerptOf(RequiredAttribute(element, Name::name)) + "\"";
}

std::unique_ptr<UserFunction> ReadFunctionDeclaration(Element element, const Transcoder& transcoder) {
    auto function = std::make_unique<UserFunction>();
    function->name = NameOf(element, transcoder);
    function->kind = DataTypeOf(element);
    SeededSet<std::string> names;
    for (const Element child : ChildrenOf(element)) {
        if (!IsParameter(child)) continue;
        function->parameters.push_back({NameOf(child, transcoder), DataTypeOf(child)});
        if (names.insert(function->parameters.back().name).second) continue;
        throw RefusalAt(child, VeskException::InconsistentDocument,
                        FunctionForMessage(element) + " has two parameters \"" +
                            ExcerptOf(child.GetAttributeOr(Name::name, {})) + "\".");
    }
    if (!function->parameters.empty()) return function;
    throw RefusalAt(element, VeskException::UnexpectedElement,
                    FunctionForMessage(element) + " has no <ParameterField>.");
}

std::unique_ptr<const Expression> ReadFunctionBody(Element element, FieldScope& scope) {
    Element body;
    for (const Element child : ChildrenOf(element)) {
        if (IsParameter(child)) continue;
        if (body) throw UnexpectedChild(child, "<DefineFunction> behind its expression");
        body = child;
    }
    if (body) return ReadExpression(body, scope);
    throw RefusalAt(element, VeskException::UnexpectedElement, FunctionForMessage(element) + " has no expression.");
}

}  // namespace nbscore
