#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/functions/BuiltInFunctions.h"
#include "transform/functions/FunctionCalls.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {
namespace {

/// `Apply` of a function that the document defines. Its arguments are evaluated first, each once. What a missing one
/// means is up to the body.
class UserFunctionCall : public Expression {
public:
    /// @param calledFunction must outlive the call; its body may be read later.
    UserFunctionCall(const UserFunction& calledFunction, std::vector<std::unique_ptr<const Expression>> callArguments,
                     ApplyOptions callOptions);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    const UserFunction& function;
    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
};

using ArgumentExpressions = std::vector<std::unique_ptr<const Expression>>;

/// What the body of a function sees: its parameters.
class ParameterValues : public FieldValues {
public:
    ParameterValues(std::vector<ExpressionValue> argumentValues, const ArgumentExpressions& argumentExpressions,
                    const FieldValues& fieldsOfCaller)
        : values(std::move(argumentValues)), arguments(argumentExpressions), callersFields(fieldsOfCaller) {}

    /// A parameter whose argument is just a field is valid when the field is.
    bool IsValid(const FieldReference& parameter) const override {
        if (!IsValidByItself(values[parameter.position])) return false;
        const auto* field = dynamic_cast<const FieldRefExpression*>(arguments[parameter.position].get());
        return field == nullptr || field->IsValid(values[parameter.position], callersFields);
    }

    WorkBudget& Budget() const override { return callersFields.Budget(); }

private:
    ExpressionValue ValueOf(const FieldReference& parameter) const override {
        return CopyOf(values[parameter.position]);
    }

    std::vector<ExpressionValue> values;
    const ArgumentExpressions& arguments;
    const FieldValues& callersFields;
};

UserFunctionCall::UserFunctionCall(const UserFunction& calledFunction, ArgumentExpressions callArguments,
                                   ApplyOptions callOptions)
    : function(calledFunction), arguments(std::move(callArguments)), options(std::move(callOptions)) {}

ExpressionValue UserFunctionCall::ValueFor(const FieldValues& fields) const {
    fields.Budget().NoteCall();
    std::vector<ExpressionValue> values;
    values.reserve(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i)
        values.push_back(CastTo(function.parameters[i].kind, arguments[i]->Evaluate(fields)));
    if (options.mapMissingTo && std::ranges::any_of(values, IsMissing)) return options.ResultForMissingArgument();
    const ParameterValues parameters(std::move(values), arguments, fields);
    return options.ResultFor(CastTo(function.kind, function.body->Evaluate(parameters)));
}

ApplyOptions::UndefinedResult ReadTreatment(Element element) {
    static constexpr std::string_view words[] = {"returnInvalid", "asMissing", "asIs"};
    return WordAttribute(element, Name::invalidValueTreatment, words) == 2 ? ApplyOptions::UndefinedResult::StaysAsItIs
                                                                           : ApplyOptions::UndefinedResult::IsMissing;
}

/// @param resultKind of the function that is called.
ApplyOptions ReadOptions(Element element, ValueKind resultKind, const Transcoder& transcoder) {
    ApplyOptions options;
    options.mapMissingTo = ReadStandIn(element, Name::mapMissingTo, resultKind, transcoder);
    options.defaultValue = ReadStandIn(element, Name::defaultValue, resultKind, transcoder);
    options.undefined = ReadTreatment(element);
    return options;
}

std::string Counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

/// "2 arguments", "2 or 3 arguments", "at least 2 arguments".
std::string Demand(std::size_t fewest, std::size_t most) {
    if (fewest == most) return Counted(fewest);
    if (most == BuiltInFunction::anyNumber) return "at least " + Counted(fewest);
    return std::to_string(fewest) + (most == fewest + 1 ? " or " : " to ") + Counted(most);
}

void DemandArguments(Element element, std::size_t count, std::size_t fewest, std::size_t most) {
    if (count >= fewest && count <= most) return;
    throw RefusalAt(
        element, Refusal::ArgumentsMiscounted,
        {ExcerptOf(RequiredAttribute(element, Name::function)), Demand(fewest, most), std::to_string(count)});
}

/// @param alwaysEvaluated how many of them every call evaluates.
std::vector<std::unique_ptr<const Expression>> ReadArguments(const std::vector<Element>& children,
                                                             std::size_t alwaysEvaluated, FieldScope& scope) {
    std::vector<std::unique_ptr<const Expression>> arguments;
    arguments.reserve(children.size());
    for (const Element child : children) {
        std::optional<FieldScope::Branch> branch;
        if (arguments.size() >= alwaysEvaluated) branch.emplace(scope);
        arguments.push_back(ReadExpression(child, scope));
    }
    return arguments;
}

VeskException UnknownFunction(Element element, std::string_view name) {
    VeskException refusal = RefusalAt(element, Refusal::FunctionUnknown, {ExcerptOf(name)});
    if (const std::string advice = SuggestFunction(name); !advice.empty()) refusal.SetAdvice(advice);
    return refusal;
}

std::unique_ptr<const Expression> MakeCall(CallParts parts) {
    const BuiltInFunction& function = parts.function;
    if (function.make != nullptr) return function.make(std::move(parts));
    return std::make_unique<ApplyExpression>(std::move(parts));
}

}  // namespace

std::unique_ptr<const Expression> ReadApply(Element element, FieldScope& scope) {
    const std::string_view quotedName = RequiredAttribute(element, Name::function);
    const std::string name = TextAt(element, quotedName, scope.GetTranscoder());
    auto children = ChildrenOf(element);
    if (const BuiltInFunction* function = FindBuiltInFunction(name)) {
        ApplyOptions options = ReadOptions(element, function->resultKind, scope.GetTranscoder());
        DemandArguments(element, children.size(), function->fewestArguments, function->mostArguments);
        auto arguments = ReadArguments(children, function->argumentsAlwaysEvaluated, scope);
        return MakeCall(
            {*function, std::move(arguments), std::move(options), std::move(children), scope.GetPatterns()});
    }
    if (const UserFunction* function = scope.FindFunctionToCall(name)) {
        ApplyOptions options = ReadOptions(element, function->kind, scope.GetTranscoder());
        DemandArguments(element, children.size(), function->parameters.size(), function->parameters.size());
        auto arguments = ReadArguments(children, BuiltInFunction::anyNumber, scope);
        return std::make_unique<UserFunctionCall>(*function, std::move(arguments), std::move(options));
    }
    throw UnknownFunction(element, quotedName);
}

}  // namespace nbscore
