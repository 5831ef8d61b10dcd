// How the fuzzer changes documents: mostly element by element and value by value, so that they stay documents and
// reach faults deep inside; sometimes byte by byte, for texts that are no documents.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "XmlEdits.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using nbscore::test::OneIn;
using nbscore::test::Randomness;

std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::size_t CopyOut(const std::string& text, std::uint8_t* data, std::size_t maxSize) {
    const std::size_t size = std::min(text.size(), maxSize);
    std::memcpy(data, text.data(), size);
    return size;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    Randomness random(seed);
    std::string text(TextOf(data, size));
    // Mostly a single edit: few documents with several changes are read to the end.
    do {
        if (OneIn(16, random) || !nbscore::fuzz::EditXml(text, random)) {
            size = CopyOut(text, data, maxSize);
            text = TextOf(data, LLVMFuzzerMutate(data, size, maxSize));
        }
    } while (OneIn(3, random));
    return CopyOut(text, data, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize, std::uint8_t* out,
                                                 std::size_t maxOutSize, unsigned int seed) {
    Randomness random(seed);
    std::string text(TextOf(first, firstSize));
    nbscore::fuzz::SpliceXml(text, TextOf(second, secondSize), random);
    return CopyOut(text, out, maxOutSize);
}
