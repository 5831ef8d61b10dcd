#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "transform/evaluation/WorkBudget.h"
#include "transform/functions/Replacement.h"

namespace re2 {
class RE2;
}

namespace nbscore {

/// A compiled pattern. A search takes time in proportion to the text and the pattern, whatever the pattern. Any number
/// of threads may search with it.
class RegularExpression {
public:
    /// For a pattern that is compiled for one search and then dropped.
    static constexpr std::size_t memoryForOnce = std::size_t{1} << 17;

    /// What compiling takes in steps, about.
    static double CompilationCost(std::string_view pattern);

    /// @param memory how many bytes it may take, with what it learns about texts. With too few a pattern is not usable,
    ///     with few it gets slow.
    RegularExpression(std::string_view pattern, std::size_t memory);
    ~RegularExpression();

    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    bool IsUsable() const;
    /// Why it is not usable.
    const std::string& Fault() const;
    bool HasGroup(std::size_t number) const;
    /// How many instructions it was compiled to.
    std::size_t Size() const;

    enum class Search { Found, NotFound, BudgetIsSpent };

    /// Looks for the first match that begins and ends between the positions of the text.
    /// @param groups receives what the groups matched, the whole match first; as many as it has room for, at most ten.
    Search Find(std::string_view text, std::size_t begin, std::size_t end, std::span<std::string_view> groups,
                WorkBudget& budget) const;

    /// Whether it matches anywhere in the text. Nothing when the budget does not suffice.
    std::optional<bool> Matches(std::string_view text, WorkBudget& budget) const;

    /// The text with every match replaced. Nothing when that would be longer than longestText, or when the budget does
    /// not suffice.
    std::optional<std::string> ReplacedAll(std::string_view text, const Replacement& replacement,
                                           WorkBudget& budget) const;

private:
    bool Spend(std::size_t bytes, WorkBudget& budget) const;

    std::unique_ptr<const re2::RE2> compiled;
    bool looksNoFurtherThanItsMatch;
};

}  // namespace nbscore
