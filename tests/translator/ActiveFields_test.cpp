#include "translator/DocumentReading.h"

#include <gtest/gtest.h>

namespace nbscore {
namespace {

TEST(ActiveFields, AnswersTheFirstPosition_WhenANameIsRepeated) {
    ActiveFields fields;
    for (const char* name : {"a", "b", "a", "c"})
        fields.Append(name);
    EXPECT_EQ(fields.IndexOf("a"), 0);
    EXPECT_EQ(fields.IndexOf("b"), 1);
    EXPECT_EQ(fields.IndexOf("c"), 3);
    EXPECT_EQ(fields.IndexOf("d"), ActiveFields::notFound);
}

}  // namespace
}  // namespace nbscore
