#include "naivebayes/NBinningEncoder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <set>

#include "ModelParts.h"

namespace {

using nbscore::test::DisplayText;
using Cutpoints = std::vector<double>;

int BinOf(const NBinningEncoder& encoder, double number) {
    const NumericValue value(number);
    return encoder.GetCategory(&value);
}

TEST(NBinningEncoder, ClosesEveryBinOnTheRight) {
    const NBinningEncoder encoder(Cutpoints{10, 20});
    EXPECT_EQ(encoder.GetEncoderType(), 1);
    EXPECT_EQ(encoder.GetNumCategories(), 3);
    EXPECT_EQ(BinOf(encoder, 5), 0);
    EXPECT_EQ(BinOf(encoder, 10), 0);
    EXPECT_EQ(BinOf(encoder, 15), 1);
    EXPECT_EQ(BinOf(encoder, 20), 1);
    EXPECT_EQ(BinOf(encoder, 25), 2);
}

TEST(NBinningEncoder, AnswersZeroOrOne_WhenThereAreNoCutpoints) {
    const NBinningEncoder encoder(Cutpoints{});
    EXPECT_EQ(encoder.GetNumCategories(), 1);
    EXPECT_EQ(BinOf(encoder, -1), 0);
    EXPECT_EQ(BinOf(encoder, 0), 1);
    EXPECT_EQ(BinOf(encoder, 5), 1);
}

TEST(NBinningEncoder, PutsTheMissingNumberIntoTheFirstBin) {
    EXPECT_EQ(BinOf(NBinningEncoder(Cutpoints{10, 20}), NumericValue::GetSysmisValue()), 0);
    EXPECT_EQ(BinOf(NBinningEncoder(Cutpoints{}), NumericValue::GetSysmisValue()), 0);
}

TEST(NBinningEncoder, PutsInfinitiesIntoTheOuterBins) {
    const NBinningEncoder encoder(Cutpoints{10, 20});
    EXPECT_EQ(BinOf(encoder, -std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(BinOf(encoder, std::numeric_limits<double>::infinity()), 2);
}

// The search finds a NaN below no cutpoint, ends at the first one and answers the code behind it.
TEST(NBinningEncoder, PutsANanBehindTheFirstCutpoint) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Cutpoints& cutpoints :
         {Cutpoints{}, Cutpoints{10}, Cutpoints{10, 20}, Cutpoints{10, 20, 30}, Cutpoints{1, 2, 3, 4, 5, 6, 7}}) {
        EXPECT_EQ(BinOf(NBinningEncoder(cutpoints), nan), 1);
        EXPECT_EQ(BinOf(NBinningEncoder(cutpoints), -nan), 1);
    }
}

TEST(NBinningEncoder, TakesATextValueForNoCategory_ButBinsAText) {
    NBinningEncoder encoder(Cutpoints{10, 20});
    const StringValue text("15");
    EXPECT_EQ(encoder.GetCategory(&text), -1);
    EXPECT_EQ(encoder.AddCategory(&text), -1);
    EXPECT_EQ(encoder.GetCategory("15"), 1);
    EXPECT_EQ(encoder.GetCategory("2e1"), 1);
    EXPECT_EQ(encoder.GetCategory("no number"), 0);
}

TEST(NBinningEncoder, RegistersNothing) {
    NBinningEncoder encoder(Cutpoints{10});
    const NumericValue value(99);
    EXPECT_EQ(encoder.AddCategory(&value), 1);
    EXPECT_EQ(encoder.AddCategory("3"), 0);
    EXPECT_EQ(encoder.GetNumCategories(), 2);
}

/// Sees whether AddCategory goes through the interface.
class ConstantEncoder : public NBinningEncoder {
public:
    using NBinningEncoder::NBinningEncoder;
    int GetCategory(const std::string&) const override { return 41; }
    int GetCategory(const ScoreValue*) const override { return 42; }
};

TEST(NBinningEncoder, AddsThroughItsOwnLookUp) {
    ConstantEncoder encoder(Cutpoints{});
    const NumericValue value(1);
    EXPECT_EQ(encoder.AddCategory("1"), 41);
    EXPECT_EQ(encoder.AddCategory(&value), 42);
}

TEST(NBinningEncoder, TakesNewCutpoints) {
    NBinningEncoder encoder(Cutpoints{10, 20});
    encoder.SetCutpoints({});
    EXPECT_EQ(encoder.GetNumCategories(), 1);
    encoder.SetCutpoints({1, 2, 3});
    EXPECT_EQ(encoder.GetNumCategories(), 4);
    EXPECT_EQ(BinOf(encoder, 2.5), 2);
}

TEST(NBinningEncoder, CopyStandsOnItsOwn) {
    NBinningEncoder source(Cutpoints{10, 20});
    const std::unique_ptr<INBVeskEncoder> cloned(source.Clone());
    source.SetCutpoints({});
    EXPECT_EQ(cloned->GetEncoderType(), 1);
    EXPECT_EQ(cloned->GetNumCategories(), 3);
    EXPECT_EQ(cloned->GetCategory("15"), 1);
}

TEST(NBinningEncoder, ListsItsCutpoints) {
    EXPECT_EQ(DisplayText(NBinningEncoder(Cutpoints{-1.5, 20})),
              "\tNBinningEncoder: number of bins = 3\n"
              "\t\tCutpoints: -1.5 20 \n");
    EXPECT_EQ(DisplayText(NBinningEncoder(Cutpoints{})),
              "\tNBinningEncoder: number of bins = 1\n"
              "\t\tCutpoints: \n");
}

RC_GTEST_PROP(NBinningEncoder, CountsTheCutpointsBelow_WhenThereAreAny,
              (const std::set<double>& ascending, double number)) {
    RC_PRE(!ascending.empty());
    const Cutpoints cutpoints(ascending.begin(), ascending.end());
    const NBinningEncoder encoder(cutpoints);
    const auto below = std::count_if(cutpoints.begin(), cutpoints.end(), [&](double c) { return c < number; });
    RC_ASSERT(BinOf(encoder, number) == below);
    for (std::size_t bin = 0; bin < cutpoints.size(); ++bin) {
        RC_ASSERT(BinOf(encoder, cutpoints[bin]) == static_cast<int>(bin));
    }
}

RC_GTEST_PROP(NBinningEncoder, StaysWithinItsBins_WhenCutpointsAreNotSorted,
              (const Cutpoints& cutpoints, double number)) {
    RC_PRE(!cutpoints.empty());
    const int bin = BinOf(NBinningEncoder(cutpoints), number);
    RC_ASSERT(bin >= 0);
    RC_ASSERT(bin <= static_cast<int>(cutpoints.size()));
}

}  // namespace
