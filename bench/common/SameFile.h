#pragma once

#include <filesystem>

namespace nbscore::bench {

/// Whether two files have the same bytes. Reads a piece at a time: a process that starts others has to stay small.
bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

}  // namespace nbscore::bench
