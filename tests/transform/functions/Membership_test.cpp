#include <gtest/gtest.h>

#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

TEST(Membership, IsEqualityWithOneOfTheOthers) {
    EXPECT_EQ(Call("isIn", {"b", "a", "b"}), "true");
    EXPECT_EQ(Call("isIn", {"c", "a", "b"}), "false");
    EXPECT_EQ(Call("isIn", {1.0, "1.0", "2"}), "true");
    EXPECT_EQ(Call("isIn", {"1", "1.0"}), "false");
    EXPECT_EQ(Call("isNotIn", {"b", "a", "b"}), "false");
    EXPECT_EQ(Call("isNotIn", {"c", "a", "b"}), "true");
    EXPECT_EQ(Call("isIn", {true, "no", "true"}), "true");
}

TEST(Membership, IsMissing_WhenAnyArgumentIs) {
    for (const char* function : {"isIn", "isNotIn"}) {
        EXPECT_EQ(Applied(function, missingArgument + Text("a") + missingArgument), "absent") << function;
        EXPECT_EQ(Applied(function, Text("a") + Text("a") + missingArgument), "absent") << function;
    }
}

}  // namespace
}  // namespace nbscore::test
