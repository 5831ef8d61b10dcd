#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "c/Failure.h"
#include "c/nbscore.h"
#include "host/SourceDocument.h"

/// @file
/// What calls with documents and texts have in common.

namespace nbscore {

/// A document as a caller names or gives it. Throws BadArgument.
inline DocumentOrigin FileOf(const char* path) {
    return {&RequireArgument(path, "path")};
}

inline DocumentOrigin MemoryOf(const void* bytes, std::size_t size, const char* name) {
    RequireArgument(name, "name");
    if (size != 0) RequireArgument(static_cast<const char*>(bytes), "bytes");
    return {name, std::string_view(static_cast<const char*>(bytes), size)};
}

/// A text that nbscore_text_free frees.
inline char* CopyText(const std::string& text) {
    char* const copy = new char[text.size() + 1];
    std::copy_n(text.c_str(), text.size() + 1, copy);
    return copy;
}

/// Gives away the text that the work makes, and answers what the call returns.
inline std::int32_t GiveText(char** given, nbscore_error** error, const auto& makeText) {
    if (given != nullptr) *given = nullptr;
    return Guarded(error, [&] {
        RequireArgument(given, "json");
        *given = CopyText(makeText());
    });
}

}  // namespace nbscore
