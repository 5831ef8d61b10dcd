#include "MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include "Require.h"

namespace nbscore::fuzz {

MemoryFile::MemoryFile(std::string_view content) : descriptor(memfd_create("fuzzed", MFD_CLOEXEC)) {
    Require(descriptor >= 0, "a file in memory can be made");
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        Require(written > 0, "a file in memory can be written");
        content.remove_prefix(static_cast<std::size_t>(written));
    }
}

MemoryFile::~MemoryFile() {
    close(descriptor);
}

std::string MemoryFile::GetPath() const {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace nbscore::fuzz
