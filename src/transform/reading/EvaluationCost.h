#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "pmml/DocumentTree.h"

namespace nbscore {

/// What evaluating an expression takes, as the document writes it: calls of the document's functions are noted, not
/// yet counted in.
struct WrittenCost {
    struct Call {
        std::size_t function;
        /// How deep in the expression it stands.
        std::size_t level;
    };

    std::uint64_t evaluations = 0;
    std::size_t deepestLevel = 0;
    std::vector<Call> calls;
    /// The level that the reader is on.
    std::size_t level = 0;
};

/// No expression nests deeper than this, the bodies of the functions that it calls counted in: evaluating it takes
/// stack for each level.
inline constexpr std::size_t mostLevels = 1000;

/// Holds a reader one level deeper as long as it lives. Throws VeskException 12, with the place of the element, when
/// that is one too many.
class DeeperLevel {
public:
    DeeperLevel(WrittenCost& costOfAll, Element element);
    ~DeeperLevel() { --cost.level; }
    DeeperLevel(const DeeperLevel&) = delete;
    DeeperLevel& operator=(const DeeperLevel&) = delete;

private:
    WrittenCost& cost;
};

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
