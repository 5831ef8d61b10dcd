#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>

#include "framework/Export.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Line and column of the start tag of every element of a document, in document order, eight bytes each.
///
/// The table is found by its document, so that a place is told with nothing but a node at hand.
class SCOREFRAMEWORK_API ElementPlaces {
public:
    struct Mark {
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };

    /// Numbers beyond 32 bits are held at the limit.
    void Add(std::uint64_t line, std::uint64_t column);
    void Add(Mark mark) { marks.push_back(mark); }
    /// The place of the element of this number, counted from 0; zeros when the table does not reach so far.
    Mark Get(std::size_t ordinal) const;

    /// Gives the document the table, in place of the one that it may have. Whoever releases the document must Detach it
    /// first. These three may be called by any thread.
    static void Attach(const xercesc::DOMDocument* document, std::unique_ptr<ElementPlaces> places);
    /// Does away with the document's table.
    static void Detach(const xercesc::DOMDocument* document);
    /// The document's table, which lives until another is attached or it is detached; null when the document did not
    /// come from the framework's own parser.
    static const ElementPlaces* Find(const xercesc::DOMDocument* document);

private:
    /// A deque, because it grows without a second copy of everything.
    std::deque<Mark> marks;
};

}  // namespace nbscore
