#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "transform/evaluation/WorkBudget.h"

namespace re2 {
class RE2;
}

namespace nbscore {

/// What `replace` puts in place of a match: text in which `$1` or `\1` stands for what the first group matched, `$0` or
/// `\0` for the whole match. A backslash before any other character, such as a dollar sign or a backslash, gives that
/// character; a dollar sign that no digit follows stands for itself.
class Replacement {
public:
    /// A group is written as one digit.
    static constexpr std::size_t greatestGroup = 9;

    explicit Replacement(std::string_view text);

    /// The replacement that stands for exactly this text.
    static std::string Quoted(std::string_view text);

    /// The greatest number of a group that it refers to.
    std::size_t GreatestGroup() const;

    /// How many parts are joined for each match.
    std::size_t CountPieces() const { return pieces.size(); }

    /// @param groups the whole match, then its groups; at least GreatestGroup() of them.
    void AppendTo(std::string& text, std::span<const std::string_view> groups) const;

private:
    struct Piece {
        std::string literal;
        /// What follows the literal; noGroup for nothing.
        std::size_t group;
    };
    static constexpr std::size_t noGroup = greatestGroup + 1;

    std::vector<Piece> pieces;
};

/// A compiled pattern. Whatever the pattern, a search takes time in proportion to the text and the pattern's length.
/// Any number of threads may search with it.
class RegularExpression {
public:
    /// For a pattern that is compiled for a single search.
    static constexpr std::size_t memoryForOnce = std::size_t{1} << 17;

    /// About how many steps compiling takes.
    static double CompilationCost(std::string_view pattern);

    /// The pattern that matches exactly this text.
    static std::string Quoted(std::string_view text);

    /// @param memory how many bytes it may take, with what it remembers of texts. With few it is slow, with too few not
    ///     usable.
    RegularExpression(std::string_view pattern, std::size_t memory);
    ~RegularExpression();

    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    bool IsUsable() const;
    /// Why it is not usable.
    const std::string& Fault() const;
    bool HasGroup(std::size_t number) const;
    /// How many instructions it has, compiled.
    std::size_t Size() const;

    enum class Search { Found, NotFound, BudgetIsSpent };

    /// Looks for the first match between the two positions of the text.
    /// @param groups receives what the groups matched, the whole match first; as many as fit, at most ten.
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

/// The regular expressions in a document: each is compiled once, however often it occurs. Used while the document is
/// read, by one thread.
class PatternStore {
public:
    /// The compiled pattern, which may be unusable.
    /// @param element where the pattern stands. Throws VeskException 12 there when the document's patterns become too
    ///     large: longer than a hundred kilobytes together, or such that they could take more than 256 megabytes.
    std::shared_ptr<const RegularExpression> Compile(const std::string& pattern, Element element);

private:
    SeededMap<std::string, std::shared_ptr<const RegularExpression>> compiled;
    std::size_t length = 0;
    std::size_t memory = 0;
};

}  // namespace nbscore
