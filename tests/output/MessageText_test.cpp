#include "output/MessageText.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

TEST(MessageText, IsQuotedWithoutControlCharacters) {
    EXPECT_EQ(QuoteForMessage("a\tb\u009B1m\x7F"), "\"a?b?1m?\"");
    EXPECT_EQ(QuoteForMessage("Maß"), "\"Maß\"");
}

TEST(MessageText, IsCutBetweenCharacters) {
    EXPECT_EQ(QuoteForMessage(std::string(79, 'a') + "ßb"), '"' + std::string(79, 'a') + "...\"");
}

}  // namespace
}  // namespace nbscore::test
