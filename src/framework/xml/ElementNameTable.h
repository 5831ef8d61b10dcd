#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nbscore {

/// Knows how full each place is in the table in which the XML library looks the names of elements up.
///
/// The library compares a name with all that share its place, for every element anew. Names fall on places by a hash
/// that everybody can compute: real ones spread over the table, which grows with them; names that were made to meet in
/// one place make reading them take time that grows with the square of their number.
class ElementNameTable {
public:
    /// How many names may share a place. Of real ones hardly ten do.
    static constexpr std::uint32_t mostInOnePlace = 100;

    /// Adds a name that the table does not have. False when it, or the growing of the table that it makes necessary,
    /// puts too many into one place.
    bool Add(const XMLCh* name);

private:
    void Grow();
    void Count(std::size_t hash);

    std::vector<std::size_t> hashes;
    /// The library's table begins with 29 places.
    std::vector<std::uint32_t> namesByPlace = std::vector<std::uint32_t>(29);
    bool isOverfull = false;
};

}  // namespace nbscore
