#include "scoring/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocations = 0;

void* Allocate(std::size_t size, std::size_t alignment) {
    ++allocations;
    const std::size_t atLeastOne = size == 0 ? 1 : size;
    void* const memory = alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__
                             ? std::malloc(atLeastOne)
                             : std::aligned_alloc(alignment, (atLeastOne + alignment - 1) / alignment * alignment);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

// The other forms of new and delete call these.
void* operator new(std::size_t size) {
    return Allocate(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

namespace nbscore::bench {

std::uint64_t CountAllocations() {
    return allocations;
}

}  // namespace nbscore::bench
