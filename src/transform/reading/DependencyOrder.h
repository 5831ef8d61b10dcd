#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace nbscore {

/// In which order things can be done of which some need others.
struct DependencyOrder {
    /// Everything, each behind what it needs; incomplete when something needs itself.
    std::vector<std::size_t> order;
    /// Something that needs itself, directly or through others; nothing when there is none. The same things always
    /// give the same answer.
    std::optional<std::size_t> needsItself;
};

/// @param needsOf what the thing at a position needs, by position. Takes no recursion, however long a chain is.
DependencyOrder OrderByDependencies(std::size_t count,
                                    const std::function<std::span<const std::size_t>(std::size_t)>& needsOf);

}  // namespace nbscore
