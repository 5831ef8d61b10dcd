// Replaces the fuzzer's own change of a few bytes.

#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

/// Appends a letter where there is room.
std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize) {
    if (size == maxSize) return size;
    data[size] = 'M';
    return size + 1;
}
