#include <gtest/gtest.h>

#include <string>

#include "transform/functions/AppliedFunction.h"

namespace nbscore::test {
namespace {

const std::string undefined = Apply("/", Number("1") + Number("0"));

TEST(Conditional, ChoosesByItsCondition) {
    EXPECT_EQ(Applied("if", Truth(true) + Text("a") + Text("b")), "text a");
    EXPECT_EQ(Applied("if", Truth(false) + Text("a") + Text("b")), "text b");
    EXPECT_EQ(Applied("if", Truth(true) + Text("a")), "text a");
}

TEST(Conditional, TakesWhatReadsAsATruthValue) {
    EXPECT_EQ(Applied("if", Text("true") + Text("a") + Text("b")), "text a");
    EXPECT_EQ(Applied("if", Number("0") + Text("a") + Text("b")), "text b");
}

TEST(Conditional, IsMissing_WhenItsConditionIsNoTruthValue) {
    EXPECT_EQ(Applied("if", Number("2") + Text("a") + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Text("yes") + Text("a") + Text("b"), "defaultValue='d' mapMissingTo='m'"), "text d");
}

TEST(Conditional, IsMissing_WhenItsConditionIsMissing) {
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b")), "absent");
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b"), "defaultValue='d'"), "text d");
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b"), "mapMissingTo='m' defaultValue='d'"), "text m");
}

TEST(Conditional, IsMissing_WhenNothingIsChosen) {
    EXPECT_EQ(Applied("if", Truth(false) + Text("a")), "absent");
    EXPECT_EQ(Applied("if", Truth(false) + Text("a"), "mapMissingTo='m' defaultValue='d'"), "text d");
}

TEST(Conditional, IsMissing_WhenWhatItChoosesIs) {
    EXPECT_EQ(Applied("if", Truth(true) + missingArgument + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Truth(true) + missingArgument + Text("b"), "mapMissingTo='m'"), "text m");
}

TEST(Conditional, TakesNoPartInWhatItDoesNotChoose) {
    EXPECT_EQ(Applied("if", Truth(true) + Text("a") + missingArgument, "mapMissingTo='m'"), "text a");
    EXPECT_EQ(Applied("if", Truth(false) + undefined + Text("b"), "mapMissingTo='m'"), "text b");
}

TEST(Conditional, IsMissing_WhenItChoosesANumberThatIsNotFinite) {
    EXPECT_EQ(Applied("if", Truth(true) + infinity + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Truth(true) + infinity + Text("b"), "invalidValueTreatment='asIs'"), "text inf");
}

}  // namespace
}  // namespace nbscore::test
