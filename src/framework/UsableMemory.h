#pragma once

#include <cstdint>
#include <filesystem>

#include "framework/Export.h"

namespace nbscore {

/// Bytes of memory that this process may have at most: what the machine has built in or what the system grants the
/// process and its group (its address space, its control groups), whichever is least. Where the system says nothing of
/// all that: four gigabytes.
/// @param root where the control groups' files are looked for.
SCOREFRAMEWORK_API std::uint64_t UsableMemory(const std::filesystem::path& root = "/");

}  // namespace nbscore
