#pragma once

#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include <cstdint>
#include <set>
#include <string_view>

namespace nbscore {

/// The names of elements and attributes that a document has used so far, each kept once, in the document's memory.
///
/// The XML library would keep them itself, in a table that never grows: looking up the names of a document of ever new
/// ones takes time that grows with the square of its size. Here it takes a number of comparisons that hardly grows.
class DistinctNames {
public:
    /// The kept name that equals this one; null when there is none.
    const XMLCh* Find(const XMLCh* name) const;
    /// Keeps a copy of a name that is not kept yet, in this document.
    const XMLCh* Keep(const XMLCh* name, xercesc::DOMDocumentImpl& document);

    std::uint64_t GetCount() const { return names.size(); }
    /// The length of all of them together, in UTF-16 units.
    std::uint64_t GetLength() const { return length; }

private:
    using Text = std::basic_string_view<XMLCh>;
    /// By length first, because most names differ in it.
    struct ShorterOrLess {
        bool operator()(Text left, Text right) const;
    };

    std::set<Text, ShorterOrLess> names;
    std::uint64_t length = 0;
};

}  // namespace nbscore
