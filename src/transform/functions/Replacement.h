#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// What `replace` puts in a match's place: text in which `$1` or `\1` stands for what the first group matched, `$0` or
/// `\0` for the whole match. A backslash before any other character, the dollar sign and itself too, gives the
/// character; a dollar sign before no digit stands for itself.
class Replacement {
public:
    /// One digit is all that stands for a group.
    static constexpr std::size_t greatestGroup = 9;

    explicit Replacement(std::string_view text);

    /// The greatest number of a group that it refers to.
    std::size_t GreatestGroup() const;

    /// How many parts it is put together from, for each match.
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

}  // namespace nbscore
