#pragma once

#include <iosfwd>
#include <string>

#include "framework/Export.h"

namespace nbscore {

/// Opens a document's file, to be read as bytes.
/// @param path in UTF-8. Throws VeskException 4, which names it, for what cannot be read.
SCOREFRAMEWORK_API void OpenDocumentFile(std::ifstream& file, const std::string& path);

/// To be asked when reading such a file ended in a refusal. Throws VeskException 4, which names the file, when it was
/// the file that failed.
SCOREFRAMEWORK_API void RequireUnbroken(const std::ifstream& file, const std::string& path);

}  // namespace nbscore
