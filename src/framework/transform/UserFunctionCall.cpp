#include "framework/transform/UserFunctionCall.h"

#include <algorithm>
#include <utility>

#include "framework/transform/FieldRefExpression.h"

namespace nbscore {
namespace {

using ArgumentExpressions = std::vector<std::unique_ptr<const Expression>>;

/// All that the body of a function sees: its parameters.
class ParameterValues : public FieldValues {
public:
    ParameterValues(std::vector<ExpressionValue> argumentValues, const ArgumentExpressions& argumentExpressions,
                    const FieldValues& fieldsOfCaller)
        : values(std::move(argumentValues)), arguments(argumentExpressions), callersFields(fieldsOfCaller) {}

    /// A parameter that stands for nothing but a field is valid when the field is.
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

}  // namespace

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

}  // namespace nbscore
