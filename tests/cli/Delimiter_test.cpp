#include "cli/verbs/Arguments.h"

#include <gtest/gtest.h>

#include <string>

namespace nbscore {

TEST(Delimiter, IsTheCharacterItself_WhenItIsOneAsciiCharacter) {
    for (const char character : std::string(",;|: \t-.a0")) {
        EXPECT_EQ(ReadDelimiter(std::string(1, character)), character);
    }
}

TEST(Delimiter, IsATabulator_WhenSpelledOut) {
    EXPECT_EQ(ReadDelimiter("tab"), '\t');
    EXPECT_EQ(ReadDelimiter("\\t"), '\t');
}

TEST(Delimiter, IsRefused_WhenTheTableCouldNotBeReadWithIt) {
    for (const char character : std::string("\"\r\n\0", 4)) {
        EXPECT_EQ(ReadDelimiter(std::string_view(&character, 1)), std::nullopt) << int{character};
    }
}

TEST(Delimiter, IsRefused_WhenItIsNotOneAsciiCharacter) {
    for (const char* text : {"", ",,", "TAB", "\\n", "\xc2\xa7", "\xff"}) {
        EXPECT_EQ(ReadDelimiter(text), std::nullopt) << text;
    }
}

}  // namespace nbscore
