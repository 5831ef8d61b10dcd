#pragma once

#include <istream>
#include <memory>
#include <streambuf>
#include <string>

#include "framework/Export.h"
#include "framework/Limits.h"

namespace nbscore {

/// A document's file, opened to be read as bytes.
class SCOREFRAMEWORK_API DocumentFile {
public:
    /// @param filePath in UTF-8. Throws VeskException 4, which names it, for what cannot be read.
    /// @param limits asked while the file is a pipe that nothing comes from, and then told of by a stream that fails.
    ///     Throws CancelledError when that is so before the file is open.
    DocumentFile(std::string filePath, const Limits& limits);
    ~DocumentFile();
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    std::istream& GetStream() { return *stream; }

    /// To be asked when reading ended in a refusal. Throws VeskException 4, which names the file, when it was the file
    /// that failed.
    void RequireUnbroken() const;

private:
    std::string path;
    std::unique_ptr<std::streambuf> buffer;
    std::unique_ptr<std::istream> stream;
};

}  // namespace nbscore
