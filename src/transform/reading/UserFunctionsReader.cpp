#include "transform/reading/UserFunctionsReader.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Transcoder.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/UserFunction.h"
#include "transform/functions/BuiltInFunctions.h"
#include "transform/reading/DependencyOrder.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/ExpressionReader.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {
namespace {

bool IsParameter(Element element) {
    return element.Is(Name::ParameterField);
}

std::string NameOf(Element element, const Transcoder& transcoder) {
    return TextAt(element, RequiredAttribute(element, Name::name), transcoder);
}

/// How messages speak of it.
std::string FunctionForMessage(Element element) {
    return "The function \"" + ExcerptOf(RequiredAttribute(element, Name::name)) + "\"";
}

/// The function that a DefineFunction element declares, without its body. Throws VeskException 1 for a function without
/// parameters, 2 for a name that is absent, 12 for two parameters of one name.
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

/// Its body, once all functions are declared. Throws VeskException 1 for no body or two, and what expressions throw.
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

VeskException Contradiction(Element element, const std::string& what) {
    return RefusalAt(element, VeskException::InconsistentDocument, FunctionForMessage(element) + what);
}

}  // namespace

UserFunctionsReader::UserFunctionsReader(UserFunctions& functionsToFill, const Transcoder& textTranscoder)
    : functions(functionsToFill), transcoder(textTranscoder) {}

void UserFunctionsReader::Declare(Element element) {
    auto function = ReadFunctionDeclaration(element, transcoder);
    if (FindBuiltInFunction(function->name)) throw Contradiction(element, " has the name of a built-in function.");
    if (!functions.positionsByName.try_emplace(function->name, elements.size()).second) {
        throw Contradiction(element, " is defined twice.");
    }
    functions.functions.push_back(std::move(function));
    elements.push_back(element);
}

std::vector<EvaluationCost> UserFunctionsReader::ReadBodies(FieldScope& scope) {
    std::vector<WrittenCost> written;
    std::vector<std::vector<std::size_t>> called(elements.size());
    for (std::size_t position = 0; position < elements.size(); ++position) {
        UserFunction& function = *functions.functions[position];
        scope.EnterFunction(function);
        function.body = ReadFunctionBody(elements[position], scope);
        for (const WrittenCost::Call& call : scope.GetCost().calls)
            called[position].push_back(call.function);
        written.push_back(scope.GetCost());
    }
    const auto calls = OrderByDependencies(
        elements.size(), [&called](std::size_t function) { return std::span<const std::size_t>(called[function]); });
    if (calls.needsItself) throw Contradiction(elements[*calls.needsItself], " calls itself.");
    std::vector<EvaluationCost> costs(elements.size());
    for (const std::size_t function : calls.order)
        costs[function] = CostWithCalls(written[function], costs);
    return costs;
}

}  // namespace nbscore
