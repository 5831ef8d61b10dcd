#pragma once

#include <cstdint>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The watch over the limits that a document was parsed under, found by any of its nodes: whoever walks through a
/// document hears of a cancellation, without being handed the limits. Used by the one thread that uses the document.
class SCOREFRAMEWORK_API DocumentWatch {
public:
    explicit DocumentWatch(const xercesc::DOMNode& node);

    /// To be called at every element or so. Throws CancelledError. Does nothing in a document that another parser made.
    void Step() const {
        if (watch != nullptr) watch->Step();
    }

private:
    /// Belongs to the document.
    LimitWatch* watch;
};

/// The bytes of memory that a document takes; 0 of one that another parser made.
SCOREFRAMEWORK_API std::uint64_t MemoryOf(const xercesc::DOMDocument& document);

}  // namespace nbscore
