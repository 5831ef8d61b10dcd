#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "pmml/DocumentTree.h"

/// @file
/// What reading must find out before anything is evaluated: the order of what depends on each other, and what it costs.

namespace nbscore {

/// An order in which things can be done, where some need others first.
struct DependencyOrder {
    /// All things, each after what it needs; incomplete when something needs itself.
    std::vector<std::size_t> order;
    /// Something that needs itself, directly or through others; nothing when there is none. The result depends on the
    /// things alone.
    std::optional<std::size_t> needsItself;
};

/// Works without recursion, however long a chain is.
/// @param needsOf the positions of what the thing at a position needs.
DependencyOrder OrderByDependencies(std::size_t count,
                                    const std::function<std::span<const std::uint32_t>(std::size_t)>& needsOf);

/// What evaluating an expression takes, without the functions of the document that it calls: these are listed.
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

/// No expression nests deeper than this, including the bodies of the functions that it calls: each level takes stack.
inline constexpr std::size_t mostLevels = 1000;

/// One more level of nesting as long as it exists. Throws VeskException 12, with the place of the element, when that is
/// one too many.
class DeeperLevel {
public:
    DeeperLevel(WrittenCost& costOfAll, Element element);
    ~DeeperLevel() { --cost.level; }
    DeeperLevel(const DeeperLevel&) = delete;
    DeeperLevel& operator=(const DeeperLevel&) = delete;

private:
    WrittenCost& cost;
};

/// What evaluating an expression takes, including every call of a function.
struct EvaluationCost {
    /// Both stop growing one above their limit.
    std::uint64_t evaluations = 0;
    std::size_t levels = 0;
};

/// The limits of one derived field, and of all in a document that call functions. Without them, sixty functions each of
/// which calls the next one twice would never come to an end.
inline constexpr std::uint64_t mostEvaluations = 1'000'000;
inline constexpr std::uint64_t mostEvaluationsOfCalls = 10'000'000;

/// @param functions the cost of each function, by position; of those that are called it must be known.
EvaluationCost CostWithCalls(const WrittenCost& written, std::span<const EvaluationCost> functions);

}  // namespace nbscore
