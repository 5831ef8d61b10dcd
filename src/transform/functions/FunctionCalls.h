#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/RefusalTable.h"
#include "transform/evaluation/Expression.h"
#include "transform/functions/BuiltInFunctions.h"
#include "transform/functions/RegularExpression.h"

/// @file
/// `Apply` of built-in functions: what the document says beside the function, and the expressions that call it.

namespace nbscore {

/// What an `Apply` says beside its function: what takes the place of missing arguments and of missing results.
struct ApplyOptions {
    enum class UndefinedResult { IsMissing, StaysAsItIs };

    /// The result when an argument is missing; the function is not called then. Never missing itself. Both are null
    /// where the document gives none, as nearly everywhere.
    std::unique_ptr<const ExpressionValue> mapMissingTo;
    /// The result in place of a missing one. Never missing itself.
    std::unique_ptr<const ExpressionValue> defaultValue;
    /// What becomes of the number that an undefined operation gives (division by zero, the logarithm of a negative
    /// number, a result that no double can hold).
    UndefinedResult undefined = UndefinedResult::IsMissing;

    /// The result of a call that gave this value.
    ExpressionValue ResultFor(ExpressionValue value) const;
    /// The result of a call with a missing argument, for a function that gives missing for it.
    ExpressionValue ResultForMissingArgument() const;
};

/// The call of a built-in function as the document has it.
struct CallParts {
    const BuiltInFunction& function;
    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    /// Of each argument: where it is refused.
    std::vector<Element> elements;
    /// For constant arguments that are regular expressions.
    PatternStore& patterns;
};

/// The text of an argument that is a constant with a value; nothing for any other argument.
std::optional<std::string> ConstantText(const Expression& argument);

/// The refusal of a call with a constant argument that cannot be used.
/// @param id whose message tells the argument, the function and the reason.
/// @param argument its position, from 0.
/// @param reason a clause that says what is wrong with it.
VeskException ArgumentRefusal(Refusal id, const CallParts& parts, std::size_t argument, std::string_view text,
                              std::string_view reason);

/// A call of a function that takes values and gives one: every argument is evaluated, in order.
class ApplyExpression : public Expression {
public:
    using Call = std::function<ExpressionValue(Arguments, WorkBudget&)>;

    /// @param functionCall called in place of the function, where there was something to do before the first case; null
    ///     for the function itself.
    explicit ApplyExpression(CallParts parts, Call functionCall = nullptr);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    ExpressionValue CallWith(Arguments values, WorkBudget& budget) const;
    ExpressionValue CallWithoutMissing(std::vector<ExpressionValue> values, WorkBudget& budget) const;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    const BuiltInFunction& function;
    /// Null for the function itself.
    std::unique_ptr<const Call> preparedCall;
};

/// `if`: evaluates its condition, then only the branch that is chosen. The other one has no influence, even if it would
/// be undefined.
class ConditionalExpression : public Expression {
public:
    explicit ConditionalExpression(CallParts parts);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
};

/// `isValid`, `isNotValid`: whether the argument has a value that its field allows.
class ValidityExpression : public Expression {
public:
    /// @param isPositive false for the negation.
    ValidityExpression(CallParts parts, bool isPositive);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    bool asksForValid;
};

}  // namespace nbscore
