#include "faults/FailingAllocations.h"

#include <execinfo.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string_view>

namespace {

std::atomic<std::int64_t> live{0};
std::atomic<bool> isCounting{false};
std::atomic<std::uint64_t> untilFailure{0};
std::atomic<bool> isLasting{false};
std::atomic<bool> hasFailed{false};

/// Where the code of a library lies in memory.
struct CodeRange {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool Holds(const void* address) const {
        const auto number = reinterpret_cast<std::uintptr_t>(address);
        return begin <= number && number < end;
    }
};

int FindRegularExpressions(dl_phdr_info* library, std::size_t, void* found) {
    if (std::string_view(library->dlpi_name).find("libre2.so") == std::string_view::npos) return 0;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const auto& segment = library->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
        const std::uintptr_t begin = library->dlpi_addr + segment.p_vaddr;
        *static_cast<CodeRange*>(found) = {begin, begin + segment.p_memsz};
    }
    return 1;
}

/// The library of regular expressions is not safe with exceptions: what it is building when one passes through is lost.
/// So its allocations never fail.
bool IsForRegularExpressions() {
    static const CodeRange regularExpressions = [] {
        CodeRange found;
        dl_iterate_phdr(FindRegularExpressions, &found);
        return found;
    }();
    std::array<void*, 100> callers = {};
    const int count = backtrace(callers.data(), static_cast<int>(callers.size()));
    return std::any_of(callers.begin(), callers.begin() + count,
                       [](const void* caller) { return regularExpressions.Holds(caller); });
}

bool MustFail() {
    if (!isCounting) return false;
    if (hasFailed) return isLasting && !IsForRegularExpressions();
    if (untilFailure > 1) {
        --untilFailure;
        return false;
    }
    if (IsForRegularExpressions()) return false;
    hasFailed = true;
    return true;
}

void* Allocate(std::size_t size) {
    if (MustFail()) throw std::bad_alloc();
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    ++live;
    return memory;
}

void Free(void* memory) {
    if (memory == nullptr) return;
    --live;
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
// The standard library's own versions call those above, but a sanitizer's do not.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return operator new(size, nothrow);
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}

namespace nbscore::test {

void LetAllocationFail(std::uint64_t number, Shortage shortage) {
    isLasting = shortage == Shortage::OfAllThatFollow;
    hasFailed = false;
    untilFailure = number;
    isCounting = true;
}

bool EndShortage() {
    isCounting = false;
    return hasFailed.exchange(false);
}

std::int64_t CountLiveAllocations() {
    return live;
}

}  // namespace nbscore::test
