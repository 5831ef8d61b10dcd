#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "framework/Export.h"
#include "pmml/DocumentTree.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/ValueKind.h"
#include "transform/functions/ApplyOptions.h"
#include "transform/functions/PatternStore.h"

namespace nbscore {

struct BuiltInFunction;

/// The values of a call's arguments, in order.
using Arguments = std::span<const ExpressionValue>;

/// What a missing argument does to a call.
enum class MissingRule {
    /// The result is missing, and the function is not called.
    GivesMissing,
    /// The function is called with the others; the result is missing when none is left.
    IsLeftOut,
    /// The function sees it.
    IsSeen
};

/// A call as the document has it: what a function makes an expression of.
struct CallParts {
    const BuiltInFunction& function;
    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    /// Where the refusal of an argument stands, for each.
    std::vector<Element> elements;
    /// For constant arguments that are regular expressions.
    PatternStore& patterns;
};

/// One of the functions that every document may call: a row of the one table of them (BuiltInFunctions.h).
struct BuiltInFunction {
    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

    std::string_view name;
    /// The arguments as people read them: "text, start, length". Brackets hold what may be left out, dots what may go
    /// on.
    std::string_view parameters;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    MissingRule missingRule;
    /// What its results are, unless they are missing; Any where that is the affair of an argument. What an `Apply` says
    /// to stand in for a result is read as one of these.
    ValueKind resultKind;
    /// One sentence for people, in Markdown.
    std::string_view description;
    /// The result for arguments that follow the missing rule. A number that is not finite says that the operation is
    /// undefined; where there is no such number, the result is missing. Null for a function that cannot be told by
    /// the values of its arguments alone.
    ExpressionValue (*call)(Arguments arguments) = nullptr;
    /// Makes the expression of a call that is more than values in, value out: one whose arguments are not all
    /// evaluated, or one that does work ahead for constant arguments. Null for all others.
    std::unique_ptr<const Expression> (*make)(CallParts parts) = nullptr;
    /// The heading that people find it under.
    std::string_view family = {};
    /// How many arguments, from the first on, are evaluated in every case. Whether the others are, their values decide.
    std::size_t argumentsAlwaysEvaluated = anyNumber;
    /// Stands in for `call` in a function that takes more work than in proportion to its arguments: the result is
    /// missing as well when the budget does not suffice.
    ExpressionValue (*callWithin)(Arguments arguments, WorkBudget& budget) = nullptr;
};

}  // namespace nbscore
