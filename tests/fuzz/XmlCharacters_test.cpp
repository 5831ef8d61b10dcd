#include "fuzz/XmlCharacters.h"

#include <gtest/gtest.h>

namespace nbscore::fuzz {
namespace {

TEST(XmlCharacters, AreThoseOfAscii_ExceptControlCharacters) {
    EXPECT_EQ(AsXmlCharacters("aZ9 <&'"), "aZ9 <&'");
    EXPECT_EQ(AsXmlCharacters(std::string("\0\n\x1F\x7F", 4)), "    ");
}

/// How many bytes a UTF-8 character has, by its first one; 0 for a byte that starts no character.
std::size_t LengthOf(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0) return 4;
    if (byte >= 0xE0) return 3;
    return byte >= 0xC2 ? 2 : 0;
}

TEST(XmlCharacters, AreWhole_ForEveryOtherByte) {
    std::size_t lengths = 0;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const std::string text = AsXmlCharacters(std::string(1, static_cast<char>(byte)));
        ASSERT_EQ(text.size(), LengthOf(text.front())) << byte;
        for (std::size_t i = 1; i < text.size(); ++i)
            ASSERT_EQ(static_cast<unsigned char>(text[i]) & 0xC0, 0x80) << byte;
        lengths |= std::size_t{1} << text.size();
    }
    EXPECT_EQ(lengths, 0b11100U) << "characters of two, three and four bytes";
}

}  // namespace
}  // namespace nbscore::fuzz
