#include "pmml/Utf8.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace nbscore::test {
namespace {

using XmlText = std::basic_string<XMLCh>;

TEST(Utf8, HoldsAllThatUtf16Does) {
    EXPECT_EQ(Utf8Of(u"a\u00E4\u20AC\U0001F600z"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z");
    EXPECT_EQ(Utf8Of(nullptr), "");
    EXPECT_EQ(Utf16Of(""), XmlText());
}

RC_GTEST_PROP(Utf8, BecomesTheSameUtf16Again_HalvesOfPairsToo, (const std::vector<std::uint16_t>& units)) {
    XmlText text;
    for (const std::uint16_t unit : units) {
        if (unit != 0) text += static_cast<XMLCh>(unit % 3 == 0 ? 0xD800 + unit % 0x800 : unit);
    }
    RC_ASSERT(Utf16Of(Utf8Of(text.c_str())) == text);
}

TEST(Utf8, TellsHalvesOfPairs) {
    const XMLCh half[] = {'a', 0xD83D, 'b', 0xDE00, 0};
    EXPECT_TRUE(HasHalfPair(Utf8Of(half)));
    EXPECT_EQ(WithoutHalfPairs(Utf8Of(half)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    EXPECT_FALSE(HasHalfPair("\xED\x9F\xBF"));
    EXPECT_FALSE(HasHalfPair(Utf8Of(u"\U0001F600\uD7FF")));
}

TEST(Utf8, IsCutBehindSoManyUnits_WhenQuoted) {
    EXPECT_EQ(ExcerptOf(std::string(80, 'x')), std::string(80, 'x'));
    EXPECT_EQ(ExcerptOf(std::string(81, 'x')), std::string(80, 'x') + "...");
    std::string smileys;
    for (int i = 0; i < 41; ++i)
        smileys += "\xF0\x9F\x98\x80";
    EXPECT_EQ(ExcerptOf(smileys), smileys.substr(0, 160) + "...");
    EXPECT_EQ(ExcerptOf("x" + smileys), "x" + smileys.substr(0, 160) + "...");
    EXPECT_EQ(ExcerptOf("a\nb"), "a?b");
}

}  // namespace
}  // namespace nbscore::test
