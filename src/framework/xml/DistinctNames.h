#pragma once

#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace nbscore {

/// The element and attribute names that a document has used so far.
///
/// The XML library looks names up in a table that never grows, so that a document of ever new names takes time that
/// grows with the square of its size. Real documents use a few hundred; what uses more than the limit is refused.
class DistinctNames {
public:
    static constexpr std::size_t limit = 10000;

    /// False when the name is new and one too many.
    bool Note(const XMLCh* name) {
        const Text text(name, xercesc::XMLString::stringLen(name));
        if (names.find(text) == names.end()) names.emplace(text);
        return names.size() <= limit;
    }

private:
    using Text = std::basic_string_view<XMLCh>;
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(Text text) const {
            std::size_t hash = 14695981039346656037u;
            for (const XMLCh unit : text)
                hash = (hash ^ unit) * 1099511628211u;
            return hash;
        }
    };
    std::unordered_set<std::basic_string<XMLCh>, Hash, std::equal_to<>> names;
};

}  // namespace nbscore
