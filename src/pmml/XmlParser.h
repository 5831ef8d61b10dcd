#pragma once

#include "framework/Export.h"
#include "framework/Limits.h"
#include "pmml/DocumentBytes.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// The document, whatever it is, as the XML library's parser reads it, from its first byte. Throws what ParseDocument
/// does, but for a stream that fails.
SCOREFRAMEWORK_API ParsedDocument ParseByLibrary(DocumentBytes& bytes, const Limits& limits);

}  // namespace nbscore
