#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "transform/ExpressionProbe.h"

namespace {

std::string Bin(const std::string& value, const std::string& interval) {
    return "<DiscretizeBin binValue='" + value + "'><Interval " + interval + "/></DiscretizeBin>";
}

const std::string bins = Bin("low", "closure='openClosed' rightMargin='10'") + "<Extension/>" +
                         Bin("high", "closure='closedOpen' leftMargin='20' rightMargin='30'") +
                         Bin("point", "closure='closedClosed' leftMargin='15' rightMargin='15'") +
                         Bin("low", "closure='closedOpen' leftMargin='40'");

std::string Binned(double x, const std::string& attributes = "", const std::string& content = bins) {
    return Given("<Discretize field='x' " + attributes + ">" + content + "</Discretize>", Case(x, "a"));
}

std::string Refusal(const std::string& content, const std::string& attributes = "") {
    return RefusalOfExpression("<Discretize field='x' " + attributes + ">\n" + content + "</Discretize>");
}

TEST(Discretize, GivesTheValueOfTheBinThatHoldsTheNumber) {
    EXPECT_EQ(Binned(-1e300), "text low");
    EXPECT_EQ(Binned(10), "text low");
    EXPECT_EQ(Binned(15), "text point");
    EXPECT_EQ(Binned(20), "text high");
    EXPECT_EQ(Binned(29.9), "text high");
    EXPECT_EQ(Binned(1e300), "text low");
}

TEST(Discretize, IsMissingOrTheDefault_WhenNoBinHoldsTheNumber) {
    for (const double x : {10.1, 14.9, 15.1, 19.9, 30.0, 39.9}) {
        EXPECT_EQ(Binned(x), "absent");
        EXPECT_EQ(Binned(x, "defaultValue='none' mapMissingTo='missing'"), "text none");
    }
}

TEST(Discretize, IsMissingOrMapped_WhenTheFieldIsMissing) {
    EXPECT_EQ(Binned(-9), "absent");
    EXPECT_EQ(Binned(-9, "defaultValue='none'"), "absent");  // that one is for no bin
    EXPECT_EQ(Binned(-9, "defaultValue='none' mapMissingTo='missing'"), "text missing");
    const std::string text = "<Discretize field='s' mapMissingTo='m'>" + bins + "</Discretize>";
    EXPECT_EQ(Given(text, Case(1, "7")), "text low");
    EXPECT_EQ(Given(text, Case(1, "seven")), "text m");
}

TEST(Discretize, TreatsWhatIsNoNumberAsMissing) {
    const std::string nan =
        "<DerivedField name='e' dataType='double'><Constant dataType='double'>NaN</Constant></DerivedField>";
    const std::string expression = "<Discretize field='e' mapMissingTo='m' defaultValue='d'>" + bins + "</Discretize>";
    EXPECT_EQ(Given(expression, Case(), "string", nan), "text m");
}

TEST(Discretize, PutsAnInfinityIntoTheBinWithoutMarginOnItsSide_WhateverTheClosure) {
    const auto infinite = [](const std::string& number) {
        return "<DerivedField name='e' dataType='double'><Constant dataType='double'>" + number +
               "</Constant></DerivedField>";
    };
    for (const std::string closure : {"openOpen", "openClosed", "closedOpen", "closedClosed"}) {
        const std::string expression = "<Discretize field='e' defaultValue='none'>" +
                                       Bin("low", "closure='" + closure + "' rightMargin='0'") +
                                       Bin("high", "closure='" + closure + "' leftMargin='1'") + "</Discretize>";
        EXPECT_EQ(Given(expression, Case(), "string", infinite("-INF")), "text low") << closure;
        EXPECT_EQ(Given(expression, Case(), "string", infinite("INF")), "text high") << closure;
    }
    const std::string bounded =
        "<Discretize field='e'>" + Bin("a", "closure='closedClosed' leftMargin='0' rightMargin='1'") + "</Discretize>";
    EXPECT_EQ(Given(bounded, Case(), "string", infinite("INF")), "absent");
}

TEST(Discretize, GivesNumbers_WhenItsDataTypeSaysSo) {
    const std::string bin = Bin("007", "closure='openOpen'");
    EXPECT_EQ(Binned(1, "dataType='integer'", bin), "text 7");
    EXPECT_EQ(Binned(1, "dataType='string'", bin), "text 007");
    EXPECT_EQ(Binned(1, "", bin), "text 007");
    EXPECT_EQ(Binned(-9, "dataType='double' mapMissingTo='1.50'", bin), "text 1.5");
    EXPECT_EQ(Refusal(Bin("a", "closure='openOpen'"), "dataType='integer'"),
              "9 5:1 DerivedField[1]/Discretize[1]/DiscretizeBin[1]: \"a\" is no number.");
    EXPECT_EQ(Refusal(bin, "dataType='integer' defaultValue='a'"),
              "9 4:1 DerivedField[1]/Discretize[1]: \"a\" is no number.");
    EXPECT_EQ(Refusal(bin, "dataType='integer' mapMissingTo='a'"),
              "9 4:1 DerivedField[1]/Discretize[1]: \"a\" is no number.");
}

TEST(Discretize, MayHaveBinsThatTouch) {
    const std::string open = Bin("a", "closure='openOpen' leftMargin='1' rightMargin='2'");
    EXPECT_EQ(Binned(2, "", open + Bin("b", "closure='closedOpen' leftMargin='2' rightMargin='3'")), "text b");
    EXPECT_EQ(Binned(1, "", open + Bin("b", "closure='closedClosed' leftMargin='1' rightMargin='1'")), "text b");
    EXPECT_EQ(Binned(2, "", open + Bin("b", "closure='openOpen' leftMargin='2' rightMargin='3'")), "absent");
}

TEST(Discretize, IsRefused_WhenBinsOverlap) {
    const std::string message =
        "5 6:1 DerivedField[1]/Discretize[1]/DiscretizeBin[2]: The bins \"a\" and \"b\" overlap.";
    const auto refusal = [](const std::string& first, const std::string& second) {
        return Refusal(Bin("a", first) + "\n" + Bin("b", second));
    };
    EXPECT_EQ(refusal("closure='openClosed' rightMargin='2'", "closure='closedOpen' leftMargin='2'"), message);
    EXPECT_EQ(refusal("closure='openOpen' leftMargin='1' rightMargin='2'", "closure='openOpen' leftMargin='1.5'"),
              message);
    EXPECT_EQ(refusal("closure='closedOpen' leftMargin='1'", "closure='openOpen' leftMargin='1'"), message);
    EXPECT_EQ(refusal("closure='openOpen'", "closure='closedClosed' leftMargin='5' rightMargin='5'"), message);
}

TEST(Discretize, IsRefused_WhenABinIsInvalid) {
    const std::string place = "DerivedField[1]/Discretize[1]/DiscretizeBin[1]";
    EXPECT_EQ(Refusal("<Extension/>"), "1 4:1 DerivedField[1]/Discretize[1]: <Discretize> has no <DiscretizeBin>.");
    EXPECT_EQ(Refusal("<Interval/>"),
              "1 5:1 DerivedField[1]/Discretize[1]/Interval[1]: <Interval> is not expected in <Discretize>.");
    EXPECT_EQ(Refusal("<DiscretizeBin binValue='a'/>"), "1 5:1 " + place + ": <DiscretizeBin> has no <Interval>.");
    EXPECT_EQ(Refusal("<DiscretizeBin/>"), "2 5:1 " + place + ": <DiscretizeBin> has no attribute \"binValue\".");
    EXPECT_EQ(Refusal("<DiscretizeBin binValue='a'><Interval closure='openOpen'/>\n<Interval/></DiscretizeBin>"),
              "1 6:1 " + place + "/Interval[2]: <Interval> is not expected in <DiscretizeBin>.");
    EXPECT_EQ(Refusal("<DiscretizeBin binValue='a'>\n<Value/></DiscretizeBin>"),
              "1 6:1 " + place + "/Value[1]: <Value> is not expected in <DiscretizeBin>.");
}

TEST(Discretize, IsRefused_WhenAnIntervalIsInvalid) {
    const std::string place = " 5:29 DerivedField[1]/Discretize[1]/DiscretizeBin[1]/Interval[1]: ";
    EXPECT_EQ(Refusal(Bin("a", "")), "2" + place + "<Interval> has no attribute \"closure\".");
    EXPECT_EQ(Refusal(Bin("a", "closure='open'")),
              "12" + place + "\"open\" is no closure: openOpen, openClosed, closedOpen or closedClosed.");
    EXPECT_EQ(Refusal(Bin("a", "closure='openOpen' leftMargin='x'")), "9" + place + "\"x\" is no number.");
    for (const std::string empty : {"closure='openClosed' leftMargin='1' rightMargin='1'",
                                    "closure='closedClosed' leftMargin='2' rightMargin='1'"}) {
        EXPECT_EQ(Refusal(Bin("a", empty)), "5" + place + "No number lies in this interval.");
    }
}

RC_GTEST_PROP(Discretize, FindsTheOnlyBinThatContainsTheNumber_WhateverTheirOrder, ()) {
    static const std::vector<std::string> closures = {"openOpen", "openClosed", "closedOpen", "closedClosed"};
    // Bins of whole tens, some left out, each shrunk by its open ends: neighbours touch or leave a point free.
    std::vector<std::string> content;
    std::vector<std::pair<int, std::string>> expected;
    bool mayBeginClosed = true;
    for (int left = 0; left < 100; left += 10) {
        if (left > 0 && *rc::gen::element(false, false, false, true)) {
            mayBeginClosed = true;
            continue;
        }
        std::string closure = *rc::gen::elementOf(closures);
        if (!mayBeginClosed) closure = "open" + closure.substr(closure.starts_with("open") ? 4 : 6);
        mayBeginClosed = !closure.ends_with("Closed");
        const std::string value = std::to_string(left) + closure;
        content.push_back(Bin(value, "closure='" + closure + "' leftMargin='" + std::to_string(left) +
                                         "' rightMargin='" + std::to_string(left + 10) + "'"));
        expected.emplace_back(left, closure);
    }
    const int x = *rc::gen::inRange(-1, 22) * 5;
    std::string wanted = "absent";
    for (const auto& [left, closure] : expected) {
        const bool inside = x > left && x < left + 10;
        const bool onLeft = x == left && closure.starts_with("closed");
        const bool onRight = x == left + 10 && closure.ends_with("Closed");
        if (inside || onLeft || onRight) wanted = "text " + std::to_string(left) + closure;
    }
    std::string text;
    for (const std::string& bin : content)
        text = *rc::gen::arbitrary<bool>() ? text + bin : bin + text;
    RC_ASSERT(Binned(x, "", text) == wanted);
}

}  // namespace
