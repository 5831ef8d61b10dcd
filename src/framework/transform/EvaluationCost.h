#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "framework/transform/WrittenCost.h"

namespace nbscore {

/// What evaluating an expression takes, with every function that it calls counted in, call by call.
struct EvaluationCost {
    /// Both are held one above their limit: more is as bad.
    std::uint64_t evaluations = 0;
    std::size_t levels = 0;
};

/// The limits of one derived field, and of all in a document that call functions. Without them, sixty functions that
/// call one another twice each would keep a case waiting for ever.
inline constexpr std::uint64_t mostEvaluations = 1'000'000;
inline constexpr std::uint64_t mostEvaluationsOfCalls = 10'000'000;

/// @param functions by position; those that are called must be there.
EvaluationCost CostWithCalls(const WrittenCost& written, std::span<const EvaluationCost> functions);

}  // namespace nbscore
