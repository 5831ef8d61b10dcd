#pragma once

#include <iosfwd>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// The document that a stream holds.
///
/// Elements of PMML have their names without prefix, whatever the document uses: where the root element binds its
/// prefix to a PMML namespace, so that `<p:PMML xmlns:p="http://www.dmg.org/PMML-4_4">` reads as `<PMML>`, it is taken
/// off the names of all elements but those for which it means something else.
///
/// No document is trusted. It may have no document type declaration, so there are no entities beyond the five of XML
/// itself; nothing is fetched; nothing nests deeper, is longer or more than DocumentLimits says, and names do not crowd
/// the XML library's table of them.
///
/// Throws VeskException 3 for what is no acceptable XML, 4 for a stream that fails, 10 for an unknown encoding,
/// 12 when there is too little memory for it or the limits refuse it, and CancelledError; nothing of the XML
/// library's own. Refusals have line and column.
/// @param limits stay with the document: who walks through it later asks them too.
SCOREFRAMEWORK_API ParsedDocument ParseDocument(std::istream& stream, const Limits& limits = {});

}  // namespace nbscore
