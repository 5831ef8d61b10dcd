#pragma once

#include <memory>
#include <string>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/XmlFwd.h"
#include "pmml/DocumentTree.h"
#include "pmml/RefusalTable.h"

/// @file
/// Documents as the XML library's DOM: for translators that read nothing else, and for hosts that have one.

namespace nbscore {

class XmlMemory;

struct SCOREFRAMEWORK_API DomReleaser {
    /// What the DOM's memory comes from.
    std::shared_ptr<XmlMemory> memory;

    void operator()(xercesc::DOMDocument* document) const;
};
using DomDocument = std::unique_ptr<xercesc::DOMDocument, DomReleaser>;

/// A DOM of the tree, which must outlive it: by it places in the DOM are known (PlaceOf). What it takes is counted
/// against the tree's limits. Throws what WithoutXmlFaults does, and VeskException 12.
SCOREFRAMEWORK_API DomDocument WriteDom(const DocumentTree& tree);

/// The tree of a DOM. Lines and columns are known where the DOM was written from a tree (and elements of it have not
/// been moved since). Throws VeskException 12 when the limits refuse it.
SCOREFRAMEWORK_API ParsedDocument ReadDom(const xercesc::DOMDocument& document, const Limits& limits);
/// The tree of an element and all that is in it. Paths in it begin at the document's root.
SCOREFRAMEWORK_API ParsedDocument ReadDom(const xercesc::DOMNode& element, const Limits& limits);
SCOREFRAMEWORK_API ParsedDocument ReadDom(const xercesc::DOMElement& element, const Limits& limits);

/// Where a node of a DOM stands: the path of its element (of a document its root), and the line and column where the
/// DOM was written from a tree. Takes time proportional to the document: for refusals only.
SCOREFRAMEWORK_API DocumentPlace PlaceOf(const xercesc::DOMNode* node);

/// The exception for a fault at a node, place included.
SCOREFRAMEWORK_API VeskException RefusalAt(const xercesc::DOMNode* node, Refusal id,
                                           std::initializer_list<std::string_view> arguments = {});

}  // namespace nbscore
