#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace nbscore {

namespace word_hash {

template <typename Word>
std::uint64_t Load(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

inline std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32);
}

/// All of up to eight bytes, some of them twice.
inline std::uint64_t LoadShort(const char* bytes, std::size_t length) {
    if (length >= 4) return Load<std::uint32_t>(bytes) | (Load<std::uint32_t>(bytes + length - 4) << 32);
    if (length == 0) return 0;
    const auto byteAt = [bytes](std::size_t position) { return static_cast<unsigned char>(bytes[position]); };
    return byteAt(0) | (std::uint64_t{byteAt(length / 2)} << 8) | (std::uint64_t{byteAt(length - 1)} << 16);
}

}  // namespace word_hash

/// A hash for looking texts up in this process: mostly short ones, whole words at a time. Not for keeping.
inline std::uint64_t HashText(std::string_view text, std::uint64_t seed) {
    std::uint64_t hash = word_hash::Mix(seed, text.size());
    const char* bytes = text.data();
    std::size_t left = text.size();
    for (; left > 8; bytes += 8, left -= 8)
        hash = word_hash::Mix(hash, word_hash::Load<std::uint64_t>(bytes));
    return word_hash::Mix(hash, word_hash::LoadShort(bytes, left));
}

}  // namespace nbscore
