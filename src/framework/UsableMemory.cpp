#include "framework/UsableMemory.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <limits>
#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace nbscore {
namespace {

constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t whereNothingIsKnown = std::uint64_t{4} << 30;

#ifdef _WIN32

std::uint64_t BuiltInMemory() {
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof(status);
    return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : unlimited;
}

std::uint64_t AddressSpace() {
    return unlimited;
}

std::uint64_t MemoryOfControlGroups(const std::filesystem::path&) {
    return unlimited;
}

#else

std::uint64_t BuiltInMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageBytes = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageBytes <= 0) return unlimited;
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageBytes);
}

std::uint64_t AddressSpace() {
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return unlimited;
    return limit.rlim_cur;
}

/// The number that a file holds; "max", and a file that is not there, are no limit.
std::uint64_t NumberIn(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::uint64_t number = 0;
    return file >> number ? number : unlimited;
}

/// The least limit of a group and of those that it is in. A container may not see its own group under the name that the
/// system has for it; its limit is then the topmost one that it sees.
std::uint64_t LeastOnTheWayUp(const std::filesystem::path& top, const std::string& group, const char* file) {
    std::uint64_t least = NumberIn(top / file);
    for (std::size_t end = group.size(); end != std::string::npos && end > 0; end = group.rfind('/', end - 1))
        least = std::min(least, NumberIn(top / group.substr(1, end - 1) / file));
    return least;
}

/// Each line of the list is a number, the controllers that the group is for, and its path: `4:memory:/users/anna`. The
/// newer kind of groups has one line for all controllers, which it does not name: `0::/users/anna`.
std::uint64_t MemoryOfControlGroups(const std::filesystem::path& root) {
    std::uint64_t least = unlimited;
    std::ifstream list(root / "proc/self/cgroup");
    for (std::string line; std::getline(list, line);) {
        const std::size_t begin = line.find(':') + 1;
        const std::size_t end = line.find(':', begin);
        if (begin == 0 || end == std::string::npos || line.compare(end + 1, 1, "/") != 0) continue;
        const std::string controllers = ',' + line.substr(begin, end - begin) + ',';
        const std::string group = line.substr(end + 1);
        const std::filesystem::path mounted = root / "sys/fs/cgroup";
        if (controllers == ",,") {
            least = std::min(least, LeastOnTheWayUp(mounted, group, "memory.max"));
        } else if (controllers.find(",memory,") != std::string::npos) {
            least = std::min(least, LeastOnTheWayUp(mounted / "memory", group, "memory.limit_in_bytes"));
        }
    }
    return least;
}

#endif

}  // namespace

std::uint64_t UsableMemory(const std::filesystem::path& root) {
    const std::uint64_t least = std::min({BuiltInMemory(), AddressSpace(), MemoryOfControlGroups(root)});
    return least == unlimited ? whereNothingIsKnown : least;
}

}  // namespace nbscore
