#pragma once

#include "framework/Export.h"
#include "framework/Limits.h"
#include "pmml/DocumentBytes.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// The document where it is written as nearly all are: well-formed XML 1.0 in UTF-8, without a document type
/// declaration, its names of ASCII letters, within DocumentLimits and the caller's. The tree is the one that the XML
/// library's parser would give, in a fraction of its time.
///
/// Null for any other: this parser refuses nothing, and what is wrong with a document, and whether anything is, the XML
/// library's parser says. Throws VeskException 12 when the system has no memory, and CancelledError.
SCOREFRAMEWORK_API ParsedDocument ParsePlain(DocumentBytes& bytes, const Limits& limits);

}  // namespace nbscore
