#include "transform/reading/TransformationDictionaryReader.h"

#include <algorithm>
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
#include "transform/reading/ExpressionText.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {
namespace {

bool IsParameter(Element element) {
    return element.Is(Name::ParameterField);
}

/// The name of a function or derived field, as messages show it. A field in an input may have none: then the input's.
std::string QuotableName(Element element) {
    return ExcerptOf(
        element.GetAttributeOr(Name::name, element.GetParent().GetAttributeOr(Name::fieldName, std::string_view())));
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
    std::vector<std::vector<std::uint32_t>> called(elements.size());
    for (std::size_t position = 0; position < elements.size(); ++position) {
        UserFunction& function = *functions.functions[position];
        scope.EnterFunction(function);
        function.body = ReadFunctionBody(elements[position], scope);
        for (const WrittenCost::Call& call : scope.GetCost().calls)
            called[position].push_back(static_cast<std::uint32_t>(call.function));
        written.push_back(scope.GetCost());
    }
    const auto calls = OrderByDependencies(
        elements.size(), [&called](std::size_t function) { return std::span<const std::uint32_t>(called[function]); });
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
    for (const Element child : field.GetChildren()) {
        if (child.Is(Name::Extension) || child.Is(Name::Value) || child.Is(Name::Interval)) continue;
        if (child.Is(Name::Decisions) && field.Is(Name::OutputField)) continue;
        if (expression) throw UnexpectedChild(child, field.GetTag() + " behind its expression");
        expression = child;
    }
    if (expression) return expression;
    throw RefusalAt(field, Refusal::DerivedFieldWithoutExpression, {QuotableName(field)});
}

/// Keeps no fault and ends at the first one.
class NoFaults {
public:
    template <typename Work>
    bool Try(const Work& work) {
        work();
        return true;
    }
};

/// Reads lists of derived fields and functions. First all functions and fields are declared, then all expressions are
/// read: so they may refer to one another in any order.
/// @tparam Faults what is asked to read a part; see FaultList.
template <typename Faults>
class Reader {
public:
    Reader(const DerivedFieldElements& elementsOfFields, const ScoreDictionary* dataDictionary,
           const Transcoder& textTranscoder, const Limits& limits, Faults& faultsOfParts)
        : parts(elementsOfFields),
          dictionary(dataDictionary),
          transcoder(textTranscoder),
          faults(faultsOfParts),
          functions(derived->functions, textTranscoder) {
        derived->limits = limits;
    }

    std::unique_ptr<const DerivedFields> Read() {
        bool isSound = DeclareAll();
        FieldScope scope(*derived, dictionary, transcoder, parts.unknownField);
        // Without one of the functions and fields, what names it would seem to be at fault.
        if (isSound && faults.Try([&] { functionCosts = functions.ReadBodies(scope); })) {
            if (ReadExpressions(scope)) faults.Try([this] { RefuseCycles(); });
        }
        if (parts.keepTexts) DescribeFunctions(parts.lists);
        return std::move(derived);
    }

private:
    /// False where a function or a field has a fault.
    bool DeclareAll() {
        std::vector<Element> children;
        for (const Element list : parts.lists) {
            for (const Element child : list.GetChildren()) {
                if (child.Is(Name::Extension)) continue;
                if (!parts.takesOnlyFunctions || !child.Is(Name::DerivedField)) children.push_back(child);
            }
        }
        const auto isField = [](Element child) { return child.Is(Name::DerivedField); };
        MakeRoom(parts.others.size() + static_cast<std::size_t>(std::ranges::count_if(children, isField)));
        bool isSound = true;
        for (const Element child : children)
            isSound = faults.Try([&] { Declare(child); }) && isSound;
        for (const FieldByItself& field : parts.others)
            isSound = faults.Try([&] { DeclareField(field); }) && isSound;
        return isSound;
    }

    /// At once, because a document may have so many fields that to make room again and again takes longer than to count
    /// them.
    void MakeRoom(std::size_t fieldCount) {
        derived->fields.reserve(fieldCount);
        derived->positions = DerivedFieldPositions(fieldCount);
        elements.reserve(fieldCount);
    }

    void Declare(Element child) {
        if (child.Is(Name::DerivedField)) {
            const std::string name = RequiredText(transcoder, child, Name::name);
            const ScoreDictVar* const namesake = dictionary ? dictionary->GetVar(name) : nullptr;
            // Some dictionaries find names that differ in blanks, too.
            if (namesake && namesake->GetName() == name) {
                throw RefusalAt(child, Refusal::DerivedFieldNamedAsDataField, {QuotableName(child)});
            }
            const auto storage = parts.storages.find(name);
            DeclareField(
                {child, name, storage == parts.storages.end() ? std::nullopt : std::optional(storage->second)});
        } else if (child.Is(Name::DefineFunction)) {
            functions.Declare(child);
        } else {
            throw UnexpectedChild(child, child.GetParent().GetTag());
        }
    }

    void DeclareField(const FieldByItself& field) {
        if (derived->Find(field.name)) {
            throw RefusalAt(field.element, Refusal::DerivedFieldTwice, {QuotableName(field.element)});
        }
        auto variable = ReadFieldDeclaration(field.element, field.name, transcoder, {.storage = field.storage});
        variable->SetRule(parts.rule);
        const bool hasTruthTexts = parts.rule == ScoringRule::Standard && KindOfField(*variable) == ValueKind::Truth;
        FunctionTreeImp function(variable->GetStorageType() == ScoreDictVar::NumericStorage);
        DeclaredValidity validity(*variable);
        derived->fields.push_back({std::move(variable), std::move(validity), std::move(function), hasTruthTexts});
        derived->positions.Add(field.name, static_cast<std::uint32_t>(elements.size()));
        elements.push_back(field.element);
    }

    /// False where a field has a fault.
    bool ReadExpressions(FieldScope& scope) {
        bool isSound = true;
        for (std::uint32_t position = 0; position < elements.size(); ++position)
            isSound = faults.Try([&] { ReadExpressionOf(position, scope); }) && isSound;
        return isSound;
    }

    void ReadExpressionOf(std::uint32_t position, FieldScope& scope) {
        const Element field = elements[position];
        scope.EnterField(position);
        derived->fields[position].function.SetExpression(ReadExpression(ExpressionOf(field), scope));
        scope.FinishField();
        const EvaluationCost cost = CostWithCalls(scope.GetCost(), functionCosts);
        RefuseTooMuchWork(field, cost, !scope.GetCost().calls.empty());
        derived->fields[position].levels = static_cast<std::uint32_t>(cost.levels);
        if (parts.keepTexts) {
            derived->texts.resize(position + 1);
            derived->texts.back() = ExpressionText(ExpressionOf(field));
        }
    }

    void DescribeFunctions(const std::vector<Element>& lists) {
        for (const Element list : lists) {
            for (const Element function : list.GetChildren(Name::DefineFunction))
                derived->textsOfFunctions.push_back(FunctionText(function));
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
        const auto order = OrderByDependencies(
            elements.size(), [this](std::size_t field) { return derived->DependenciesOf(derived->fields[field]); });
        if (!order.needsItself) return;
        Element field = elements[*order.needsItself];
        throw RefusalAt(field, Refusal::DerivedFieldInCycle, {QuotableName(field)});
    }

    const DerivedFieldElements& parts;
    const ScoreDictionary* dictionary;
    const Transcoder& transcoder;
    Faults& faults;
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
    NoFaults faults;
    const DerivedFieldElements elements{.lists = {element}, .keepTexts = false};
    Reader reader(elements, dictionary, transcoder, limits, faults);
    return std::make_unique<DerivedFieldDictionary>(reader.Read());
}

std::unique_ptr<TransformationDictionary> ReadDerivedFields(const DerivedFieldElements& elements,
                                                            const ScoreDictionary* dictionary,
                                                            const Transcoder& transcoder, const Limits& limits,
                                                            FaultList& faults) {
    Reader reader(elements, dictionary, transcoder, limits, faults);
    return std::make_unique<DerivedFieldDictionary>(reader.Read());
}

}  // namespace nbscore
