#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace nbscore {

/// The few calls about open files that differ between systems. Each reports failure as the C library does, with errno,
/// unless it says otherwise.

/// Opens what is no regular file, such as a device or a named pipe, for writing bytes; null on failure. Where systems
/// let files be swapped, a regular file is left as it is.
std::FILE* OpenForWriting(const std::filesystem::path& path);
bool LeadsToTerminal(std::FILE* file);
/// Writes bytes to an open file, past the C library's buffer, as many as the system takes at once. Answers how many, or
/// something negative on failure.
std::ptrdiff_t WriteSomeBytes(std::FILE* file, std::string_view bytes);
/// Has the system begin to bring a part of an open file to the disk, where it can, so that less is left to wait for in
/// the end. Waits only until the disk accepts the order, and reports nothing.
void StartSyncToDisk(std::FILE* file, std::uint64_t begin, std::uint64_t size);
/// Makes what was written survive a power failure, where the system can; false on failure.
bool SyncToDisk(std::FILE* file);

#ifndef _WIN32
/// Gives a new file the owner, group, permissions, access control list and user attributes of the file that it is to
/// replace. Both are open descriptors. False, with errno, where the permissions cannot be set.
///
/// Until then only the owner may have access to the new file: others get theirs last. What lets a program run as
/// somebody else (set-user-ID, set-group-ID, capabilities) is never passed on. Only the administrator can give a file
/// to another owner, and others only to a group of their own. Where the group or the list cannot be kept, group and
/// others get only the permissions that both of them had, because the new group has other members.
bool PassOnAttributes(int from, int to);
#endif

}  // namespace nbscore
