#include "transform/reading/TransformationDictionaryReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "framework/SeededHash.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/DerivedFieldDictionary.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/functions/BuiltInFunctions.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/EvaluationPlan.h"
#include "transform/reading/ExpressionReader.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {
namespace {

bool IsParameter(Element element) {
    return element.Is(Name::ParameterField);
}

/// The name of a function or derived field, as messages show it.
std::string QuotableName(Element element) {
    return ExcerptOf(RequiredAttribute(element, Name::name));
}

/// The function that a DefineFunction element declares, without its body. Throws VeskException 1 for a function without
/// parameters, 2 for a name that is absent, 12 for two parameters of one name.
std::unique_ptr<UserFunction> ReadFunctionDeclaration(Element element, const Transcoder& transcoder) {
    auto function = std::make_unique<UserFunction>();
    function->name = RequiredText(transcoder, element, Name::name);
    function->kind = DataTypeOf(element);
    SeededSet<std::string> names;
    for (const Element child : ChildrenOf(element)) {
        if (!IsParameter(child)) continue;
        function->parameters.push_back({RequiredText(transcoder, child, Name::name), DataTypeOf(child)});
        if (names.insert(function->parameters.back().name).second) continue;
        throw RefusalAt(child, Refusal::ParameterTwice, {QuotableName(element), QuotableName(child)});
    }
    if (!function->parameters.empty()) return function;
    throw RefusalAt(element, Refusal::FunctionWithoutParameters, {QuotableName(element)});
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
    throw RefusalAt(element, Refusal::FunctionWithoutExpression, {QuotableName(element)});
}

/// Reads the DefineFunction elements of a document. First all are declared, then their bodies are read: so they may
/// call one another in any order, but not in a cycle.
class UserFunctionsReader {
public:
    UserFunctionsReader(UserFunctions& functionsToFill, const Transcoder& textTranscoder)
        : functions(functionsToFill), transcoder(textTranscoder) {}

    /// Throws VeskException 12 for a name that a built-in function or an earlier one has, and what
    /// ReadFunctionDeclaration throws.
    void Declare(Element element);

    /// What a call of each takes, by position. Throws VeskException 12 for a function that calls itself, directly or
    /// through others, and what ReadFunctionBody throws.
    std::vector<EvaluationCost> ReadBodies(FieldScope& scope);

private:
    UserFunctions& functions;
    const Transcoder& transcoder;
    /// By position.
    std::vector<Element> elements;
};

void UserFunctionsReader::Declare(Element element) {
    auto function = ReadFunctionDeclaration(element, transcoder);
    if (FindBuiltInFunction(function->name)) {
        throw RefusalAt(element, Refusal::FunctionNamedAsBuiltIn, {QuotableName(element)});
    }
    if (!functions.positionsByName.try_emplace(function->name, elements.size()).second) {
        throw RefusalAt(element, Refusal::FunctionTwice, {QuotableName(element)});
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
    if (calls.needsItself) {
        Element element = elements[*calls.needsItself];
        throw RefusalAt(element, Refusal::FunctionInCycle, {QuotableName(element)});
    }
    std::vector<EvaluationCost> costs(elements.size());
    for (const std::size_t function : calls.order)
        costs[function] = CostWithCalls(written[function], costs);
    return costs;
}

/// The one child that is neither an Extension nor part of the field's declaration.
Element ExpressionOf(Element field) {
    Element expression;
    for (const Element child : ChildrenOf(field)) {
        if (child.Is(Name::Value) || child.Is(Name::Interval)) continue;
        if (expression) throw UnexpectedChild(child, "<DerivedField> behind its expression");
        expression = child;
    }
    if (expression) return expression;
    throw RefusalAt(field, Refusal::DerivedFieldWithoutExpression, {QuotableName(field)});
}

/// Reads a TransformationDictionary element. First all functions and fields are declared, then all expressions are
/// read: so they may refer to one another in any order.
class Reader {
public:
    Reader(const ScoreDictionary* dataDictionary, const Transcoder& textTranscoder, const Limits& limits)
        : dictionary(dataDictionary), transcoder(textTranscoder), functions(derived->functions, textTranscoder) {
        derived->limits = limits;
    }

    std::unique_ptr<const DerivedFields> Read(Element transformations) {
        for (const Element child : ChildrenOf(transformations))
            Declare(child);
        FieldScope scope(*derived, dictionary, transcoder);
        functionCosts = functions.ReadBodies(scope);
        ReadExpressions(scope);
        RefuseCycles();
        return std::move(derived);
    }

private:
    void Declare(Element child) {
        if (child.Is(Name::DerivedField)) return DeclareField(child);
        if (child.Is(Name::DefineFunction)) return functions.Declare(child);
        throw UnexpectedChild(child, "<TransformationDictionary>");
    }

    void DeclareField(Element field) {
        const std::string name = RequiredText(transcoder, field, Name::name);
        if (dictionary && dictionary->GetVar(name)) {
            throw RefusalAt(field, Refusal::DerivedFieldNamedAsDataField, {QuotableName(field)});
        }
        if (!derived->positionsByName.try_emplace(name, elements.size()).second) {
            throw RefusalAt(field, Refusal::DerivedFieldTwice, {QuotableName(field)});
        }
        auto variable = ReadFieldDeclaration(field, name, transcoder);
        FunctionTreeImp function(variable->GetStorageType() == ScoreDictVar::NumericStorage);
        derived->fields.push_back({variable.get(), DeclaredValidity(*variable), std::move(function), {}, {}, {}});
        derived->variables.AddVar(name, variable.release());
        elements.push_back(field);
    }

    void ReadExpressions(FieldScope& scope) {
        for (std::size_t position = 0; position < elements.size(); ++position) {
            scope.EnterField(position);
            derived->fields[position].function.SetExpression(ReadExpression(ExpressionOf(elements[position]), scope));
            scope.FinishField();
            const EvaluationCost cost = CostWithCalls(scope.GetCost(), functionCosts);
            RefuseTooMuchWork(elements[position], cost, !scope.GetCost().calls.empty());
            derived->fields[position].levels = cost.levels;
        }
    }

    void RefuseTooMuchWork(Element field, const EvaluationCost& cost, bool callsFunctions) {
        if (callsFunctions) evaluationsOfCalls += cost.evaluations;
        if (cost.levels > mostLevels) {
            throw RefusalAt(field, Refusal::CallsTooDeep, {QuotableName(field), std::to_string(mostLevels)});
        }
        if (cost.evaluations > mostEvaluations) {
            throw RefusalAt(field, Refusal::EvaluationsTooMany, {QuotableName(field), std::to_string(mostEvaluations)});
        }
        if (evaluationsOfCalls > mostEvaluationsOfCalls) {
            throw RefusalAt(field, Refusal::EvaluationsTooManyTogether,
                            {QuotableName(field), std::to_string(mostEvaluationsOfCalls)});
        }
    }

    void RefuseCycles() const {
        const auto order = OrderByDependencies(elements.size(), [this](std::size_t field) {
            return std::span<const std::size_t>(derived->fields[field].dependencies);
        });
        if (!order.needsItself) return;
        Element field = elements[*order.needsItself];
        throw RefusalAt(field, Refusal::DerivedFieldInCycle, {QuotableName(field)});
    }

    const ScoreDictionary* dictionary;
    const Transcoder& transcoder;
    std::unique_ptr<DerivedFields> derived = std::make_unique<DerivedFields>();
    UserFunctionsReader functions;
    std::vector<EvaluationCost> functionCosts;
    /// The element of each derived field, by position.
    std::vector<Element> elements;
    /// Of all derived fields that call functions.
    std::uint64_t evaluationsOfCalls = 0;
};

}  // namespace

std::unique_ptr<TransformationDictionary> ReadTransformationDictionary(Element element,
                                                                       const ScoreDictionary* dictionary,
                                                                       const Transcoder& transcoder,
                                                                       const Limits& limits) {
    return std::make_unique<DerivedFieldDictionary>(Reader(dictionary, transcoder, limits).Read(element));
}

}  // namespace nbscore
