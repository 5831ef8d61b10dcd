#include "naivebayes/NBCatNumericEncoder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "ModelParts.h"

namespace {

using nbscore::test::DisplayText;
using Numbers = std::vector<double>;

TEST(NBCatNumericEncoder, HasNoCategories_WhenNew) {
    const NBCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.GetEncoderType(), 2);
    EXPECT_EQ(encoder.GetNumCategories(), 0);
    EXPECT_EQ(encoder.GetCategory("1"), -1);
    EXPECT_EQ(DisplayText(encoder),
              "\tNBCatNumericEncoder: Last code = -1\n"
              "\t\tNumeric values of categories: \n");
}

TEST(NBCatNumericEncoder, TakesAnyExpectedNumber) {
    EXPECT_EQ(NBCatNumericEncoder(-5).GetNumCategories(), 0);
}

TEST(NBCatNumericEncoder, GivesCodesInOrderOfFirstRegistration) {
    NBCatNumericEncoder encoder(2);
    EXPECT_EQ(encoder.AddCategory("2"), 0);
    EXPECT_EQ(encoder.AddCategory("1"), 1);
    EXPECT_EQ(encoder.AddCategory("2.0"), 0);
    EXPECT_EQ(encoder.GetNumCategories(), 2);
    EXPECT_EQ(encoder.GetCategory(" 1.0 "), 1);
}

TEST(NBCatNumericEncoder, KeepsTheFirstCode_WhenTheListRepeatsANumber) {
    const NBCatNumericEncoder encoder(Numbers{1.0, 2.0, 1.0});
    EXPECT_EQ(encoder.GetNumCategories(), 2);
    EXPECT_EQ(encoder.GetCategory("1"), 0);
    EXPECT_EQ(encoder.GetCategory("2"), 1);
}

TEST(NBCatNumericEncoder, KnowsNoTolerance) {
    const NBCatNumericEncoder encoder(Numbers{0.3});
    const NumericValue sum(0.1 + 0.2);
    const NumericValue exact(0.3);
    EXPECT_EQ(encoder.GetCategory(&sum), -1);
    EXPECT_EQ(encoder.GetCategory(&exact), 0);
}

TEST(NBCatNumericEncoder, TakesNegativeAndPositiveZeroForOneNumber) {
    const NBCatNumericEncoder encoder(Numbers{0.0, -0.0});
    EXPECT_EQ(encoder.GetNumCategories(), 1);
    EXPECT_EQ(encoder.GetCategory("-0"), 0);
}

TEST(NBCatNumericEncoder, ReadsTheNumberOfAText) {
    NBCatNumericEncoder encoder(2);
    const StringValue text("7.50");
    EXPECT_EQ(encoder.AddCategory(&text), 0);
    EXPECT_EQ(encoder.GetCategory("7.5"), 0);
}

TEST(NBCatNumericEncoder, LooksTheMissingValueUpLikeAnyOther) {
    NBCatNumericEncoder encoder(Numbers{1.0});
    const NumericValue missing(NumericValue::GetSysmisValue());
    const StringValue word("no number");
    EXPECT_EQ(encoder.GetCategory(&missing), -1);
    EXPECT_EQ(encoder.GetCategory(&word), -1);
    EXPECT_EQ(encoder.AddCategory(&missing), 1);
    EXPECT_EQ(encoder.GetCategory(&missing), 1);
    EXPECT_EQ(encoder.GetCategory(&word), 1);
    EXPECT_EQ(encoder.GetCategory("no number either"), 1);
}

TEST(NBCatNumericEncoder, TakesNaNForNoCategory) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    NBCatNumericEncoder encoder(Numbers{1.0, nan, 2.0});
    const NumericValue notANumber(nan);
    EXPECT_EQ(encoder.GetNumCategories(), 2);
    EXPECT_EQ(encoder.GetCategory(&notANumber), -1);
    EXPECT_EQ(encoder.AddCategory(&notANumber), -1);
    EXPECT_EQ(encoder.GetCategory("2"), 1);
}

TEST(NBCatNumericEncoder, StartsANewLine_AfterEverySeventhNumber) {
    EXPECT_EQ(DisplayText(NBCatNumericEncoder(Numbers{8, 7, 6, 5, 4, 3, 2, 1.5})),
              "\tNBCatNumericEncoder: Last code = 7\n"
              "\t\tNumeric values of categories: 8 7 6 5 4 3 2 \n"
              "1.5 \n");
}

TEST(NBCatNumericEncoder, EndsWithAnEmptyLine_WhenThereAreExactlySeven) {
    EXPECT_EQ(DisplayText(NBCatNumericEncoder(Numbers{1, 2, 3, 4, 5, 6, 7})),
              "\tNBCatNumericEncoder: Last code = 6\n"
              "\t\tNumeric values of categories: 1 2 3 4 5 6 7 \n"
              "\n");
}

TEST(NBCatNumericEncoder, WritesWithTheStreamsOwnPrecision) {
    std::ostringstream out;
    out.precision(3);
    NBCatNumericEncoder(Numbers{1.23456}).Display(out);
    EXPECT_NE(out.str().find(": 1.23 \n"), std::string::npos);
}

TEST(NBCatNumericEncoder, CopyStandsOnItsOwn) {
    NBCatNumericEncoder source(Numbers{3, 1});
    const std::unique_ptr<INBVeskEncoder> cloned(source.Clone());
    NBCatNumericEncoder assigned(9);
    assigned = source;
    source.AddCategory("8");
    EXPECT_EQ(cloned->GetNumCategories(), 2);
    EXPECT_EQ(cloned->GetEncoderType(), 2);
    EXPECT_EQ(cloned->GetCategory("1"), 1);
    EXPECT_EQ(DisplayText(assigned), DisplayText(*cloned));
}

RC_GTEST_PROP(NBCatNumericEncoder, CodesAsAListOfDifferentNumbersWould, (const Numbers& numbers)) {
    NBCatNumericEncoder encoder(2);
    Numbers different;
    for (const double number : numbers) {
        const NumericValue value(number);
        const auto known = std::find(different.begin(), different.end(), number);
        const auto expected = static_cast<int>(known - different.begin());
        if (known == different.end()) different.push_back(number);
        RC_ASSERT(encoder.AddCategory(&value) == expected);
        RC_ASSERT(encoder.GetCategory(&value) == expected);
    }
    RC_ASSERT(encoder.GetNumCategories() == static_cast<int>(different.size()));
}

}  // namespace
