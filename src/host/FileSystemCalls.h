#pragma once

#include <cstdio>
#include <filesystem>

namespace nbscore {

/// The few calls that name or force a file differently from system to system. Each reports failure as the C
/// library does, with errno.

/// Creates a file that must not exist and opens it for writing bytes; null on failure.
std::FILE* CreateNewFile(const std::filesystem::path& path);
/// Opens an existing file for writing bytes, emptying it; null on failure.
std::FILE* OpenForWriting(const std::filesystem::path& path);
/// True when an existing file may be written to; nothing is changed.
bool MayWriteTo(const std::filesystem::path& path);
/// Makes what was written and flushed survive a power failure, where the system can; false on failure.
bool SyncToDisk(std::FILE* file);

}  // namespace nbscore
