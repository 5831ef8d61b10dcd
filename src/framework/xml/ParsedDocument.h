#pragma once

#include <iosfwd>
#include <memory>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/XmlFwd.h"

namespace nbscore {

class XmlMemory;

struct SCOREFRAMEWORK_API DocumentReleaser {
    /// What the document's memory comes from.
    std::shared_ptr<XmlMemory> memory;

    void operator()(xercesc::DOMDocument* document) const;
};
using ParsedDocument = std::unique_ptr<xercesc::DOMDocument, DocumentReleaser>;

/// The document that a stream holds; elements of PMML have their names without prefix, whatever the document uses
/// (DropPmmlPrefix). Throws VeskException 3 for what is no acceptable XML, 4 for a stream that
/// fails, 10 for an encoding that nobody knows, 12 when there is too little memory for it or the limits refuse it, and
/// CancelledError; nothing of the XML library's own.
/// @param limits stay with the document: who walks through it later asks them too (DocumentWatch).
SCOREFRAMEWORK_API ParsedDocument ParseDocument(std::istream& stream, const Limits& limits = {});

}  // namespace nbscore
