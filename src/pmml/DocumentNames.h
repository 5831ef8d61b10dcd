#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "framework/Export.h"
#include "framework/VeskException.h"
#include "pmml/TreeBuilder.h"

/// @file
/// The names in a document while it is parsed.

namespace nbscore {

/// Knows how full each place is in the table in which the XML library looks the names of elements up.
///
/// The library compares a name with all that share its place, again for every element. Names fall on places by a hash
/// that everybody can compute: real ones spread over the table, which grows with them; names that were made to meet in
/// one place make reading them take time that grows with the square of their number.
class ElementNameTable {
public:
    /// How many names may share a place. Of real ones hardly ten do.
    static constexpr std::uint32_t mostInOnePlace = 100;

    /// Adds a name that the table does not have. False when it, or the growing of the table that it makes necessary,
    /// puts too many into one place.
    bool Add(std::string_view name);

private:
    void Grow();
    void Count(std::size_t hash);

    std::vector<std::size_t> hashes;
    /// The library's table begins with 29 places.
    std::vector<std::uint32_t> namesByPlace = std::vector<std::uint32_t>(29);
    bool isOverfull = false;
};

/// The names that a document uses, as many and as long as they may be. Throws VeskException 3, without a place.
class SCOREFRAMEWORK_API DocumentNames {
public:
    explicit DocumentNames(TreeBuilder& treeBuilder) : builder(treeBuilder) {}

    /// Of an attribute.
    Name Find(std::string_view spelling);
    Name FindOfElement(std::string_view spelling);

private:
    struct Uses {
        bool isCounted = false;
        bool isOfElement = false;
    };

    void Count(std::size_t size);

    TreeBuilder& builder;
    /// By number.
    std::vector<Uses> uses;
    ElementNameTable table;
    std::uint64_t count = 0;
    std::uint64_t length = 0;
};

}  // namespace nbscore
