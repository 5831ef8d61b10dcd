#include <gtest/gtest.h>

#include <string>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

const std::string oneByZero = Number("1") + Number("0");

TEST(UndefinedResult, IsMissing_UnlessItStaysAsItIs) {
    EXPECT_EQ(Applied("/", oneByZero), "absent");
    EXPECT_EQ(Applied("/", oneByZero, "invalidValueTreatment='returnInvalid'"), "absent");
    EXPECT_EQ(Applied("/", oneByZero, "invalidValueTreatment='asMissing'"), "absent");
    EXPECT_EQ(Applied("/", oneByZero, "invalidValueTreatment='asIs'"), "text inf");
    EXPECT_EQ(Applied("ln", Number("-1"), "invalidValueTreatment='asIs'", "double"), "number nan");
}

TEST(UndefinedResult, BecomesTheDefaultValue_WhenItIsMissing) {
    EXPECT_EQ(Applied("/", oneByZero, "defaultValue='0' mapMissingTo='7'"), "text 0");
    EXPECT_EQ(Applied("/", oneByZero, "defaultValue='0' invalidValueTreatment='asMissing'"), "text 0");
    EXPECT_EQ(Applied("/", oneByZero, "defaultValue='0' invalidValueTreatment='asIs'"), "text inf");
}

TEST(UndefinedResult, IsMissingEvenAsItIs_WhenThereIsNoNumberToShow) {
    EXPECT_EQ(Applied("+", Text("one") + Number("1"), "invalidValueTreatment='asIs'"), "absent");
    EXPECT_EQ(Applied("dateDaysSinceYear", Text("today") + Number("1960"), "invalidValueTreatment='asIs'"), "absent");
}

TEST(MissingArgument, GivesMapMissingToRatherThanDefaultValue) {
    EXPECT_EQ(Applied("+", Number("1") + missingArgument, "mapMissingTo='7'"), "text 7");
    EXPECT_EQ(Applied("+", Number("1") + missingArgument, "defaultValue='0'"), "text 0");
    EXPECT_EQ(Applied("+", Number("1") + missingArgument, "defaultValue='0' mapMissingTo='7'"), "text 7");
    EXPECT_EQ(Applied("+", Number("1") + Number("2"), "defaultValue='0' mapMissingTo='7'"), "text 3");
}

TEST(Replacement, IsANumberWhereOneIsNeeded) {
    const std::string seven = Apply("+", Number("1") + missingArgument, "mapMissingTo='7'");
    EXPECT_EQ(Applied("*", seven + Number("2")), "text 14");
    EXPECT_EQ(Applied("abs", missingArgument, "mapMissingTo='7'", "double"), "number 7");
}

}  // namespace
}  // namespace nbscore::test
