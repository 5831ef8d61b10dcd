#include <gtest/gtest.h>

#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

TEST(MissingValues, AreAskedFor) {
    EXPECT_EQ(Call("isMissing", {missing}), "true");
    EXPECT_EQ(Call("isMissing", {""}), "false");
    EXPECT_EQ(Call("isNotMissing", {missing}), "false");
    EXPECT_EQ(Call("isNotMissing", {0.0}), "true");
}

TEST(MissingValues, AreAskedForInADocument) {
    EXPECT_EQ(Applied("isMissing", missingArgument), "text true");
    EXPECT_EQ(Applied("isNotMissing", missingArgument), "text false");
    EXPECT_EQ(Applied("isMissing", "<FieldRef field='x'/>"), "text false");
    EXPECT_EQ(Applied("isMissing", Apply("ln", Number("-1"))), "text true");
}

TEST(MissingValues, GiveMapMissingTo_WhenTheArgumentIsMissing) {
    for (const char* function : {"isMissing", "isNotMissing", "isValid", "isNotValid"})
        EXPECT_EQ(Applied(function, missingArgument, "mapMissingTo='m'"), "text m") << function;
    EXPECT_EQ(Applied("isMissing", Text("a"), "mapMissingTo='m'"), "text false");
}

TEST(Validity, IsHavingAValue_WhenTheArgumentIsNoField) {
    EXPECT_EQ(Applied("isValid", Text("a")), "text true");
    EXPECT_EQ(Applied("isNotValid", Text("a")), "text false");
    EXPECT_EQ(Applied("isValid", missingArgument), "text false");
    EXPECT_EQ(Applied("isNotValid", missingArgument), "text true");
    EXPECT_EQ(Applied("isValid", "<FieldRef field='x'/>"), "text true");
}

/// Twice at each level would take longer than anyone waits.
TEST(Validity, EvaluatesItsArgumentOnce_HoweverDeepItNests) {
    std::string nested = "<FieldRef field='x'/>";
    for (int level = 0; level < 200; ++level)
        nested = "<Apply function='isValid' mapMissingTo='m'>" + nested + "</Apply>";
    EXPECT_EQ(Applied("isValid", nested, "mapMissingTo='m'"), "text true");
}

}  // namespace
}  // namespace nbscore::test
