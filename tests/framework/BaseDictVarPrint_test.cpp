#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace {

std::string Printed(const ScoreDictVar& variable) {
    std::ostringstream out;
    variable.Print(out);
    return out.str();
}

TEST(BaseDictVarPrint, NamesKindAndStorage) {
    EXPECT_EQ(Printed(BaseDictVar("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous)),
              "age: continuous, numeric\n");
    EXPECT_EQ(Printed(BaseDictVar("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical)),
              "color: categorical, text\n");
    EXPECT_EQ(Printed(BaseDictVar("grade", ScoreDictVar::NumericStorage, ScoreDictVar::Ordinal)),
              "grade: ordinal, numeric\n");
}

TEST(BaseDictVarPrint, ListsWhatIsDeclared) {
    BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    age.SetDisplayName("Age in years");
    age.AddValidValue(std::make_unique<NumericValue>(0.5), "");
    age.AddValidValue(std::make_unique<NumericValue>(1.0), "one");
    age.AddMissingValue(std::make_unique<NumericValue>(99.0));
    age.AddMissingValue(std::make_unique<NumericValue>(NumericValue::GetSysmisValue()));
    age.AddInvalidValue(std::make_unique<NumericValue>(-1.0));
    age.AddInterval({ValueInterval::ClosedOpen, 0.0, 10.0});
    age.AddInterval({ValueInterval::OpenClosed, 10.0, 120.5});

    EXPECT_EQ(Printed(age),
              "age \"Age in years\": continuous, numeric; values: 0.5, 1 = \"one\"; "
              "missing values: 99, system-missing; invalid values: -1; intervals: [0, 10), (10, 120.5]\n");
}

TEST(BaseDictVarPrint, QuotesTexts) {
    BaseDictVar color("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    color.AddValidValue(std::make_unique<StringValue>("red"), "");
    color.AddValidValue(std::make_unique<StringValue>("g"), "green");
    color.AddMissingValue(std::make_unique<StringValue>(""));

    EXPECT_EQ(Printed(color), "color: categorical, text; values: \"red\", \"g\" = \"green\"; missing values: \"\"\n");
}

TEST(BaseDictVarPrint, ShowsOpenAndUnboundedIntervals) {
    BaseDictVar x("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    x.AddInterval({ValueInterval::OpenOpen, 1.0, 2.0});
    ValueInterval unbounded;
    unbounded.closure = ValueInterval::ClosedClosed;
    x.AddInterval(unbounded);

    EXPECT_EQ(Printed(x), "x: continuous, numeric; intervals: (1, 2), [-inf, inf]\n");
}

BaseDictVar VariableWithValues(int count) {
    BaseDictVar variable("id", ScoreDictVar::NumericStorage, ScoreDictVar::Categorical);
    for (int value = 0; value < count; ++value) {
        variable.AddValidValue(std::make_unique<NumericValue>(value), "");
    }
    return variable;
}

TEST(BaseDictVarPrint, ListsAll_WhenThereAreTwenty) {
    EXPECT_EQ(Printed(VariableWithValues(20)),
              "id: categorical, numeric; values: 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, "
              "19\n");
}

TEST(BaseDictVarPrint, CountsTheRest_WhenThereAreThousands) {
    EXPECT_EQ(Printed(VariableWithValues(5000)),
              "id: categorical, numeric; values: 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, "
              "19, ... (5000 in all)\n");
}

TEST(BaseDictVarPrint, WritesOneLine_WhenNamesHoldLineEnds) {
    BaseDictVar variable("a\nb", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    variable.SetDisplayName("c\r\nd");
    variable.AddValidValue(std::make_unique<StringValue>("e\tf\x7f"), "g\nh");

    EXPECT_EQ(Printed(variable), "a b \"c  d\": categorical, text; values: \"e f \" = \"g h\"\n");
}

TEST(BaseDictVarPrint, KeepsTextBeyondAscii) {
    EXPECT_EQ(Printed(BaseDictVar("Gr\xC3\xB6\xC3\x9F"
                                  "e",
                                  ScoreDictVar::NumericStorage, ScoreDictVar::Continuous)),
              "Gr\xC3\xB6\xC3\x9F"
              "e: continuous, numeric\n");
}

TEST(BaseDictVarPrint, DoesNotDependOnTheStreamsNumberFormat) {
    BaseDictVar x("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    x.AddInterval({ValueInterval::ClosedClosed, 0.1, 1000000.0});
    std::ostringstream out;
    out << std::hex << std::fixed << std::setprecision(1);
    x.Print(out);

    EXPECT_EQ(out.str(), "x: continuous, numeric; intervals: [0.1, 1000000]\n");
}

}  // namespace
