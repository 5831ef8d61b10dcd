#pragma once

#include <cstdint>

#include "framework/Export.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Tells the lines and columns of many elements of one document. As long as they are asked for in document order, all
/// answers together take the time of one walk through the document. (PlaceOf takes that for each.)
class SCOREFRAMEWORK_API PlacesInOrder {
public:
    struct LineAndColumn {
        std::uint64_t line = 0;
        std::uint64_t column = 0;
    };

    /// The document must outlive this, and not change meanwhile.
    explicit PlacesInOrder(const xercesc::DOMDocument& walkedDocument);

    /// The place of an element at or behind the one that was asked for before. Zeros for one in front of that, for all
    /// that are asked for afterwards, and when the document did not come through the framework's own parser.
    LineAndColumn Find(const xercesc::DOMElement& element);

private:
    const xercesc::DOMDocument& document;
    const xercesc::DOMNode* node;
    std::uint64_t ordinal = 0;
};

}  // namespace nbscore
