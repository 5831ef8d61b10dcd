#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "document/IgnoredConstruct.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// A kind of construct that scoring does not heed, in the words of remarks. Told apart by its address.
struct IgnoredKind {
    /// Follows the construct's name, with a full stop: `is not used: a missing value stays missing.`
    const char* effect;
    const char* advice;
    /// See IgnoredConstruct.
    bool isWarning = false;
};

/// Collects what is ignored: of each kind the first one, and how many there are, so that what is told stays short
/// however long the document is.
class IgnoredLog {
public:
    /// @param kind must outlive the log.
    /// @param subject the construct's name, as the beginning of a sentence.
    void Note(const IgnoredKind& kind, const xercesc::DOMElement& element, const std::string& subject);

    /// In document order. The document must not have changed since the first note.
    std::vector<IgnoredConstruct> Finish() const;

private:
    struct Entry {
        const IgnoredKind* kind;
        const xercesc::DOMElement* first;
        std::string subject;
        std::size_t count;
    };
    std::vector<Entry> entries;
};

/// An attribute in quotes, shortened and without control characters, to name a construct by.
std::string QuotedAttribute(const xercesc::DOMElement& element, const XMLCh* name);

}  // namespace nbscore
