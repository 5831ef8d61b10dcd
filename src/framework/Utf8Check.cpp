#include "framework/Utf8Check.h"

#include <cstdint>
#include <cstring>

namespace nbscore {
namespace {

constexpr std::uint64_t EachByte(std::uint64_t byte) {
    return byte * 0x0101010101010101U;
}

/// True when the eight bytes are ASCII characters other than NUL.
bool AreEightPlainCharacters(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    // Without high bits, subtracting one reaches a high bit exactly where a byte is zero.
    return ((word | (word - EachByte(0x01))) & EachByte(0x80)) == 0;
}

/// How many bytes follow a first byte, and which ones may come second; the later ones are always 80 to BF.
struct Sequence {
    std::size_t following;
    unsigned char secondLow;
    unsigned char secondHigh;
};

constexpr Sequence GetSequence(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF) return {1, 0x80, 0xBF};
    if (first == 0xE0) return {2, 0xA0, 0xBF};
    if (first == 0xED) return {2, 0x80, 0x9F};
    if (first >= 0xE1 && first <= 0xEF) return {2, 0x80, 0xBF};
    if (first == 0xF0) return {3, 0x90, 0xBF};
    if (first >= 0xF1 && first <= 0xF3) return {3, 0x80, 0xBF};
    if (first == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

/// Checks the one character that begins at the position with a byte that is not ASCII.
Utf8Check CheckLongCharacter(std::string_view text, std::size_t position) {
    const Sequence sequence = GetSequence(static_cast<unsigned char>(text[position]));
    if (sequence.following == 0) return {Utf8Check::Verdict::Invalid, position};
    for (std::size_t i = 1; i <= sequence.following; ++i) {
        if (position + i >= text.size()) return {Utf8Check::Verdict::Incomplete, position};
        const auto byte = static_cast<unsigned char>(text[position + i]);
        const unsigned char low = i == 1 ? sequence.secondLow : 0x80;
        const unsigned char high = i == 1 ? sequence.secondHigh : 0xBF;
        if (byte < low || byte > high) return {Utf8Check::Verdict::Invalid, position};
    }
    return {Utf8Check::Verdict::Sound, position + sequence.following + 1};
}

}  // namespace

Utf8Check CheckUtf8(std::string_view text, std::size_t from, std::size_t to) {
    std::size_t position = from;
    while (position < to) {
        if (to - position >= 8 && AreEightPlainCharacters(text.data() + position)) {
            position += 8;
            continue;
        }
        const char character = text[position];
        if (character == '\0') return {Utf8Check::Verdict::Nul, position};
        if (static_cast<unsigned char>(character) < 0x80) {
            ++position;
            continue;
        }
        const Utf8Check check = CheckLongCharacter(text, position);
        if (check.verdict != Utf8Check::Verdict::Sound) return check;
        position = check.position;
    }
    return {Utf8Check::Verdict::Sound, position};
}

}  // namespace nbscore
