#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "framework/NumberText.h"
#include "transform/ExpressionProbe.h"

namespace {

using nbscore::FormatNumber;

const std::string points =
    "<LinearNorm orig='0' norm='1'/><Extension/><LinearNorm orig='10' norm='2'/><LinearNorm orig='20' norm='12'/>";

std::string Norm(double x, const std::string& attributes = "") {
    return Given("<NormContinuous field='x' " + attributes + ">" + points + "</NormContinuous>", Case(x, "a"));
}

TEST(NormContinuous, LiesOnTheSegmentThatContainsTheNumber) {
    EXPECT_EQ(Norm(0), "text 1");
    EXPECT_EQ(Norm(5), "text 1.5");
    EXPECT_EQ(Norm(10), "text 2");
    EXPECT_EQ(Norm(12), "text 4");
    EXPECT_EQ(Norm(20), "text 12");
}

TEST(NormContinuous, GoesOnStraight_WhenOutliersStayAsTheyAre) {
    for (const std::string outliers : {"", "outliers='asIs'"}) {
        EXPECT_EQ(Norm(-10, outliers), "text 0");
        EXPECT_EQ(Norm(30, outliers), "text 22");
    }
}

TEST(NormContinuous, IsMissing_WhenOutliersAreMissingValues) {
    EXPECT_EQ(Norm(-0.5, "outliers='asMissingValues'"), "absent");
    EXPECT_EQ(Norm(20.5, "outliers='asMissingValues'"), "absent");
    EXPECT_EQ(Norm(20.5, "outliers='asMissingValues' mapMissingTo='7'"), "text 7");
    EXPECT_EQ(Norm(20, "outliers='asMissingValues'"), "text 12");
}

TEST(NormContinuous, EndsFlat_WhenOutliersAreExtremeValues) {
    EXPECT_EQ(Norm(-100, "outliers='asExtremeValues'"), "text 1");
    EXPECT_EQ(Norm(100, "outliers='asExtremeValues'"), "text 12");
}

TEST(NormContinuous, IsMissingOrMapped_WhenTheFieldIsMissing) {
    EXPECT_EQ(Norm(-9), "absent");
    EXPECT_EQ(Norm(-9, "mapMissingTo='0.5'"), "text 0.5");
    EXPECT_EQ(Norm(-9, "mapMissingTo='none'"), "text none");
}

TEST(NormContinuous, MapsToANumber_WhereTheTextIsOneWhateverTheFieldHolds) {
    const auto equalsOne = [](const std::string& field, const std::string& mapped) {
        return Given("<Apply function='equal'><NormContinuous field='" + field + "' mapMissingTo='" + mapped + "'>" +
                         points + "</NormContinuous><Constant dataType='string'>1</Constant></Apply>",
                     Case(-9, "NA"));
    };
    EXPECT_EQ(equalsOne("s", "1.0"), "text true");
    EXPECT_EQ(equalsOne("x", "1.0"), "text true");
    EXPECT_EQ(equalsOne("s", "one"), "text false");
}

TEST(NormContinuous, ReadsATextFieldAsANumber_OrAsMissing) {
    const std::string norm = "<NormContinuous field='s' mapMissingTo='m'>" + points + "</NormContinuous>";
    EXPECT_EQ(Given(norm, Case(0, " 5 ")), "text 1.5");
    EXPECT_EQ(Given(norm, Case(0, "five")), "text m");
}

TEST(NormContinuous, TreatsWhatIsNoNumberAsMissing) {
    const std::string nan =
        "<DerivedField name='e' dataType='double'><Constant dataType='double'>NaN</Constant></DerivedField>";
    const std::string infinity =
        "<DerivedField name='e' dataType='double'><Constant dataType='double'>INF</Constant></DerivedField>";
    const std::string norm = "<NormContinuous field='e' mapMissingTo='m'>" + points + "</NormContinuous>";
    const std::string flat =
        "<NormContinuous field='e' mapMissingTo='m'><LinearNorm orig='0' norm='1'/><LinearNorm orig='1' "
        "norm='1'/></NormContinuous>";
    EXPECT_EQ(Given(norm, Case(), "string", nan), "text m");
    EXPECT_EQ(Given(norm, Case(), "string", infinity), "text inf");
    EXPECT_EQ(Given(flat, Case(), "string", infinity), "text m");  // zero times infinity
}

RC_GTEST_PROP(NormContinuous, FollowsTheFormulaOfTheFirstSegmentThatContainsTheNumber, ()) {
    auto origins = *rc::gen::unique<std::vector<int>>(*rc::gen::inRange<std::size_t>(2, 20), rc::gen::inRange(-50, 50));
    std::sort(origins.begin(), origins.end());
    const auto norms = *rc::gen::container<std::vector<int>>(origins.size(), rc::gen::inRange(-50, 50));
    const double x = *rc::gen::inRange(-600, 600) / 10.0;
    std::string line;
    for (std::size_t i = 0; i < origins.size(); ++i)
        line += "<LinearNorm orig='" + std::to_string(origins[i]) + "' norm='" + std::to_string(norms[i]) + "'/>";
    std::size_t segment = 0;
    while (segment + 2 < origins.size() && x > origins[segment + 1])
        ++segment;
    const double expected = norms[segment] + (x - origins[segment]) / (origins[segment + 1] - origins[segment]) *
                                                 (norms[segment + 1] - norms[segment]);
    const std::string norm = "<NormContinuous field='x'>" + line + "</NormContinuous>";
    RC_ASSERT(Given(norm, Case(x, "a"), "double") == (x == -9 ? "absent" : "number " + FormatNumber(expected)));
}

TEST(NormContinuous, IsRefused_WhenItsPointsMakeNoLine) {
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'/>"),
              "5 4:1 DerivedField[1]/NormContinuous[1]: <NormContinuous> needs two <LinearNorm> at least.");
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'><LinearNorm orig='1' norm='1'/></NormContinuous>"),
              "5 4:1 DerivedField[1]/NormContinuous[1]: <NormContinuous> needs two <LinearNorm> at least.");
    for (const std::string second : {"1", "0.5"}) {
        EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'><LinearNorm orig='1' norm='1'/>\n<LinearNorm orig='" +
                                      second + "' norm='2'/></NormContinuous>"),
                  "5 5:1 DerivedField[1]/NormContinuous[1]/LinearNorm[2]: The orig " + second +
                      " is not above the one before it, 1.");
    }
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'><LinearNorm orig='1' norm='a'/></NormContinuous>"),
              "9 4:27 DerivedField[1]/NormContinuous[1]/LinearNorm[1]: \"a\" is no number.");
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'><LinearNorm norm='1'/></NormContinuous>"),
              "2 4:27 DerivedField[1]/NormContinuous[1]/LinearNorm[1]: <LinearNorm> has no attribute \"orig\".");
}

TEST(NormContinuous, IsRefused_WhenItsPartsAreUnknown) {
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='y'>" + points + "</NormContinuous>"),
              "8 4:1 DerivedField[1]/NormContinuous[1]: \"y\" is no field.");
    EXPECT_EQ(RefusalOfExpression("<NormContinuous>" + points + "</NormContinuous>"),
              "2 4:1 DerivedField[1]/NormContinuous[1]: <NormContinuous> has no attribute \"field\".");
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x' outliers='asis'>" + points + "</NormContinuous>"),
              "5 4:1 DerivedField[1]/NormContinuous[1]: \"asis\" is no \"outliers\" of <NormContinuous>: asIs, "
              "asMissingValues or asExtremeValues.");
    EXPECT_EQ(RefusalOfExpression("<NormContinuous field='x'><Constant/></NormContinuous>"),
              "1 4:27 DerivedField[1]/NormContinuous[1]/Constant[1]: <Constant> is not expected in <NormContinuous>.");
}

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
