#pragma once

#include "framework/Limits.h"
#include "pmml/DocumentBytes.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// As XmlServices::Parse, but that the library's own exceptions may leave it.
ParsedDocument ParseByLibrary(DocumentBytes& bytes, const Limits& limits);

}  // namespace nbscore
