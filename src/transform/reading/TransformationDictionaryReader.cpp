#include "transform/reading/TransformationDictionaryReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "pmml/FieldDeclarationReader.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/DerivedFieldDictionary.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/reading/DependencyOrder.h"
#include "transform/reading/ElementReading.h"
#include "transform/reading/EvaluationCost.h"
#include "transform/reading/ExpressionReader.h"
#include "transform/reading/FieldScope.h"
#include "transform/reading/UserFunctionsReader.h"

namespace nbscore {
namespace {

std::string FieldForMessage(Element field) {
    return "The derived field \"" + ExcerptOf(RequiredAttribute(field, Name::name)) + "\"";
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
    throw RefusalAt(field, VeskException::UnexpectedElement, FieldForMessage(field) + " has no expression.");
}

/// First every function and field is declared, then every expression is read: so they may refer to one another in any
/// order.
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
        const std::string name = TextAt(field, RequiredAttribute(field, Name::name), transcoder);
        if (dictionary && dictionary->GetVar(name)) {
            throw RefusalAt(field, VeskException::InconsistentDocument,
                            FieldForMessage(field) + " has the name of a data field.");
        }
        if (!derived->positionsByName.try_emplace(name, elements.size()).second) {
            throw RefusalAt(field, VeskException::InconsistentDocument, FieldForMessage(field) + " is declared twice.");
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
        std::string what;
        if (cost.levels > mostLevels) {
            what = " nests functions more than " + std::to_string(mostLevels) + " levels deep.";
        } else if (cost.evaluations > mostEvaluations) {
            what =
                " takes more than " + std::to_string(mostEvaluations) + " evaluations, those in functions counted in.";
        } else if (evaluationsOfCalls > mostEvaluationsOfCalls) {
            what = " and those before it take more than " + std::to_string(mostEvaluationsOfCalls) +
                   " evaluations in functions.";
        } else {
            return;
        }
        throw RefusalAt(field, VeskException::InconsistentDocument, FieldForMessage(field) + what);
    }

    void RefuseCycles() const {
        const auto order = OrderByDependencies(elements.size(), [this](std::size_t field) {
            return std::span<const std::size_t>(derived->fields[field].dependencies);
        });
        if (!order.needsItself) return;
        Element field = elements[*order.needsItself];
        throw RefusalAt(field, VeskException::InconsistentDocument, FieldForMessage(field) + " depends on itself.");
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
