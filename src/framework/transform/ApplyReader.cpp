#include "framework/transform/ApplyReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/transform/ApplyExpression.h"
#include "framework/transform/BuiltInFunctions.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/ExpressionReader.h"
#include "framework/transform/UserFunctionCall.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

constexpr XmlName functionName = "function";

std::optional<ExpressionValue> StandIn(const DOMElement* element, const XMLCh* name, ValueKind resultKind,
                                       const Transcoder& transcoder) {
    ExpressionValue value = AttributeOfKind(element, name, resultKind, transcoder);
    return IsMissing(value) ? std::nullopt : std::optional(std::move(value));
}

ApplyOptions::UndefinedResult ReadTreatment(const DOMElement* element) {
    constexpr XmlName treatmentName = "invalidValueTreatment";
    static constexpr std::string_view words[] = {"returnInvalid", "asMissing", "asIs"};
    return WordAttribute(element, treatmentName, words) == 2 ? ApplyOptions::UndefinedResult::StaysAsItIs
                                                             : ApplyOptions::UndefinedResult::IsMissing;
}

/// @param resultKind of the function that is called.
ApplyOptions ReadOptions(const DOMElement* element, ValueKind resultKind, const Transcoder& transcoder) {
    constexpr XmlName mapMissingToName = "mapMissingTo";
    constexpr XmlName defaultValueName = "defaultValue";
    ApplyOptions options;
    options.mapMissingTo = StandIn(element, mapMissingToName, resultKind, transcoder);
    options.defaultValue = StandIn(element, defaultValueName, resultKind, transcoder);
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

void DemandArguments(const DOMElement* element, std::size_t count, std::size_t fewest, std::size_t most) {
    if (count >= fewest && count <= most) return;
    throw RefusalAt(element, VeskException::InconsistentDocument,
                    "The function \"" + ExcerptOf(BaseTranslator::GetAttribute(element, functionName)) + "\" takes " +
                        Demand(fewest, most) + ", not " + std::to_string(count) + ".");
}

/// @param alwaysEvaluated how many of them every call evaluates.
std::vector<std::unique_ptr<const Expression>> ReadArguments(const std::vector<const DOMElement*>& children,
                                                             std::size_t alwaysEvaluated, FieldScope& scope) {
    std::vector<std::unique_ptr<const Expression>> arguments;
    arguments.reserve(children.size());
    for (const DOMElement* child : children) {
        std::optional<FieldScope::Branch> branch;
        if (arguments.size() >= alwaysEvaluated) branch.emplace(scope);
        arguments.push_back(ReadExpression(child, scope));
    }
    return arguments;
}

std::unique_ptr<const Expression> MakeCall(CallParts parts) {
    const BuiltInFunction& function = parts.function;
    if (function.make != nullptr) return function.make(std::move(parts));
    return std::make_unique<ApplyExpression>(std::move(parts));
}

}  // namespace

std::unique_ptr<const Expression> ReadApply(const DOMElement* element, FieldScope& scope) {
    const XMLCh* xmlName = BaseTranslator::GetAttributeForced(element, functionName);
    const std::string name = TextAt(element, xmlName, scope.GetTranscoder());
    const auto children = ChildrenOf(element);
    if (const BuiltInFunction* function = FindBuiltInFunction(name)) {
        ApplyOptions options = ReadOptions(element, function->resultKind, scope.GetTranscoder());
        DemandArguments(element, children.size(), function->fewestArguments, function->mostArguments);
        auto arguments = ReadArguments(children, function->argumentsAlwaysEvaluated, scope);
        return MakeCall({*function, std::move(arguments), std::move(options), children, scope.GetPatterns()});
    }
    if (const UserFunction* function = scope.FindFunctionToCall(name)) {
        ApplyOptions options = ReadOptions(element, function->kind, scope.GetTranscoder());
        DemandArguments(element, children.size(), function->parameters.size(), function->parameters.size());
        auto arguments = ReadArguments(children, BuiltInFunction::anyNumber, scope);
        return std::make_unique<UserFunctionCall>(*function, std::move(arguments), std::move(options));
    }
    throw RefusalAt(element, VeskException::UnsupportedExpression,
                    "The function \"" + ExcerptOf(xmlName) + "\" is not known.");
}

}  // namespace nbscore
