#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

TEST(NormDiscrete, IsOneForTheValueAndZeroForOthers) {
    const std::string norm = "<NormDiscrete field='s' value='a'/>";
    EXPECT_EQ(Given(norm, Case(1, "a")), "text 1");
    EXPECT_EQ(Given(norm, Case(1, "A")), "text 0");
    EXPECT_EQ(Given(norm, Case(1, "a"), "double"), "number 1");
}

TEST(NormDiscrete, ComparesNumbers_WhenTheFieldHoldsNumbers) {
    EXPECT_EQ(Given("<NormDiscrete field='x' value='2.0'/>"), "text 1");
    EXPECT_EQ(Given("<NormDiscrete field='x' value='3'/>"), "text 0");
    EXPECT_EQ(Given("<NormDiscrete field='x' value='two'/>"), "text 0");
    EXPECT_EQ(Given("<NormDiscrete field='s' value='2.0'/>", Case(0, "2")), "text 0");
}

TEST(NormDiscrete, IsMissingOrMapped_WhenTheFieldIsMissing) {
    EXPECT_EQ(Given("<NormDiscrete field='s' value='a'/>", Case(1, "NA")), "absent");
    EXPECT_EQ(Given("<NormDiscrete field='s' value='NA'/>", Case(1, "NA")), "absent");
    EXPECT_EQ(Given("<NormDiscrete field='s' value='a' mapMissingTo='0'/>", Case(1, "NA")), "text 0");
}

TEST(NormDiscrete, MapsToANumber_WhereTheTextIsOneWhateverTheFieldHolds) {
    const auto equalsOne = [](const std::string& field, const std::string& mapped) {
        return Given("<Apply function='equal'><NormDiscrete field='" + field + "' value='a' mapMissingTo='" + mapped +
                         "'/><Constant dataType='string'>1</Constant></Apply>",
                     Case(-9, "NA"));
    };
    EXPECT_EQ(equalsOne("s", "1.0"), "text true");
    EXPECT_EQ(equalsOne("x", "1.0"), "text true");
    EXPECT_EQ(equalsOne("s", "one"), "text false");
}

TEST(NormDiscrete, ReadsItsValueLikeAConstant_WhenTheFieldIsAParameterWithoutType) {
    const auto called = [](const std::string& value, const std::string& argument) {
        return Given("<Apply function='f'>" + argument + "</Apply>", Case(2, "2"), "string",
                     "<DefineFunction name='f' optype='categorical'><ParameterField name='p'/><NormDiscrete field='p' "
                     "value='" +
                         value + "'/></DefineFunction>");
    };
    EXPECT_EQ(called("2.0", "<FieldRef field='x'/>"), "text 1");
    EXPECT_EQ(called("2.0", "<FieldRef field='s'/>"), "text 1");
    EXPECT_EQ(called("two", "<FieldRef field='s'/>"), "text 0");
    EXPECT_EQ(called("1", "<Apply function='isNotMissing'><FieldRef field='s'/></Apply>"), "text 1");
}

TEST(NormDiscrete, IsRefused_WhenItsPartsAreUnknown) {
    const std::string place = " 4:1 DerivedField[1]/NormDiscrete[1]: ";
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete field='s'/>"),
              "2" + place + "<NormDiscrete> has no attribute \"value\".");
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete value='a'/>"),
              "2" + place + "<NormDiscrete> has no attribute \"field\".");
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete field='y' value='a'/>"), "8" + place + "\"y\" is no field.");
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete field='s' value='a' method='thermometer'/>"),
              "11" + place + "The method \"thermometer\" of <NormDiscrete> is not supported.");
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete field='s' value='a' method='indicator'><Extension/></NormDiscrete>"),
              "none");
    EXPECT_EQ(RefusalOfExpression("<NormDiscrete field='s' value='a'><Value/></NormDiscrete>"),
              "1 4:35 DerivedField[1]/NormDiscrete[1]/Value[1]: <Value> is not expected in <NormDiscrete>.");
}

}  // namespace
