#include "translator/EncoderFactory.h"

#include <gtest/gtest.h>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

std::unique_ptr<INBVeskEncoder> MakeEncoder(const ScoreDictVar& var) {
    LimitWatch watch;
    return MakeCategoricalEncoder(var, watch);
}

TEST(EncoderFactory, MakesATextEncoder_WhenTheVariableHoldsText) {
    BaseDictVar var("colour", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    var.AddValidValue(std::make_unique<StringValue>("red"), "");
    var.AddValidValue(std::make_unique<StringValue>("blue"), "Blue");
    const auto encoder = MakeEncoder(var);
    EXPECT_EQ(encoder->GetEncoderType(), 3);
    EXPECT_EQ(encoder->GetNumCategories(), 2);
    EXPECT_EQ(encoder->GetCategory("red"), 0);
    EXPECT_EQ(encoder->GetCategory("blue"), 1);
    EXPECT_EQ(encoder->GetCategory("Blue"), -1);
}

TEST(EncoderFactory, MakesANumberEncoder_WhenTheVariableHoldsNumbers) {
    BaseDictVar var("size", ScoreDictVar::NumericStorage, ScoreDictVar::Ordinal);
    for (const double number : {3.0, 1.0, 2.0})
        var.AddValidValue(std::make_unique<NumericValue>(number), "");
    const auto encoder = MakeEncoder(var);
    EXPECT_EQ(encoder->GetEncoderType(), 2);
    EXPECT_EQ(encoder->GetCategory("3.0"), 0);
    EXPECT_EQ(encoder->GetCategory("1"), 1);
    EXPECT_EQ(encoder->GetCategory("2"), 2);
}

TEST(EncoderFactory, MakesAnEmptyEncoder_WhenNoValueIsDeclared) {
    EXPECT_EQ(MakeEncoder(BaseDictVar("a", ScoreDictVar::StringStorage, ScoreDictVar::Categorical))->GetNumCategories(),
              0);
    EXPECT_EQ(MakeEncoder(BaseDictVar("b", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous))->GetNumCategories(),
              0);
}

TEST(EncoderFactory, GivesOneCategory_WhenAValueIsDeclaredTwice) {
    BaseDictVar var("size", ScoreDictVar::NumericStorage, ScoreDictVar::Categorical);
    for (const std::string text : {"1", "1.0", "2"})
        var.AddValidValue(std::make_unique<NumericValue>(text), "");
    const auto encoder = MakeEncoder(var);
    EXPECT_EQ(encoder->GetNumCategories(), 2);
    EXPECT_EQ(encoder->GetCategory("2"), 1);
}

}  // namespace
}  // namespace nbscore::test
