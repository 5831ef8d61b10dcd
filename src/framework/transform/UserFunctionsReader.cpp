#include "framework/transform/UserFunctionsReader.h"

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "framework/document/Refusal.h"
#include "framework/transform/BuiltInFunctions.h"
#include "framework/transform/DefineFunctionReader.h"
#include "framework/transform/DependencyOrder.h"

namespace nbscore {
namespace {

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
