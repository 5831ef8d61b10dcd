#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "framework/Export.h"
#include "transform/evaluation/Expression.h"

namespace nbscore {

/// The call of a function as the document has it (FunctionCalls.h).
struct CallParts;

/// The values of a call's arguments, in order.
using Arguments = std::span<const ExpressionValue>;

/// What a missing argument does to a call.
enum class MissingRule {
    /// The result is missing, and the function is not called.
    GivesMissing,
    /// The function is called with the other arguments; the result is missing when there are none.
    IsLeftOut,
    /// The function sees it.
    IsSeen
};

/// One of the functions that every document may call: a row of the table of them.
struct BuiltInFunction {
    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

    std::string_view name;
    /// The arguments as the documentation shows them: "text, start, length". What stands in brackets may be left out,
    /// dots mean any number of further arguments.
    std::string_view parameters;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    MissingRule missingRule;
    /// The kind of its results; Any when it depends on an argument. The values that an `Apply` gives in place of a
    /// result are read as this kind.
    ValueKind resultKind;
    /// One sentence for the documentation, in Markdown.
    std::string_view description;
    /// The result for arguments that follow the missing rule. A number that is not finite means that the operation is
    /// undefined; where no number can say so, the result is missing. Null for a function whose result does not follow
    /// from the values of its arguments alone.
    ExpressionValue (*call)(Arguments arguments) = nullptr;
    /// Makes the expression of a call that does not just evaluate all arguments and pass on their values: because it
    /// does not evaluate all of them, or because it works ahead for constant ones. Null for all other functions.
    std::unique_ptr<const Expression> (*make)(CallParts parts) = nullptr;
    /// The heading of its family in the documentation.
    std::string_view family = {};
    /// How many arguments, from the first one, are evaluated in every case. The others may depend on their values.
    std::size_t argumentsAlwaysEvaluated = anyNumber;
    /// In place of `call`, for a function whose work is not in proportion to its arguments: the result is also missing
    /// when the budget does not suffice.
    ExpressionValue (*callWithin)(Arguments arguments, WorkBudget& budget) = nullptr;
};

/// Every built-in function, family by family: the one table behind reading documents and the documentation.
SCOREFRAMEWORK_API std::span<const BuiltInFunction> GetBuiltInFunctions();

/// The function of exactly this name; null when there is none.
const BuiltInFunction* FindBuiltInFunction(std::string_view name);

/// What to do about a function of this name, which is not known: it is a built-in one except for upper and lower case,
/// or for the prefix `x-` of producers' own functions. Empty when the name does not tell.
std::string SuggestFunction(std::string_view name);

}  // namespace nbscore
