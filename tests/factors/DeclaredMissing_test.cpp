#include "factors/ValueRows.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

std::unique_ptr<BaseDictVar> WithMissingValues(std::unique_ptr<BaseDictVar> var) {
    var->AddMissingValue(std::make_unique<NumericValue>(-99.0));
    var->AddMissingValue(std::make_unique<StringValue>("n/a"));
    return var;
}

TEST(DeclaredMissing, HoldsWhatAContinuousVariableDeclares) {
    const DeclaredMissing missing(*WithMissingValues(test::ContinuousVariable("age")));
    EXPECT_TRUE(missing.Contains(-99.0));
    EXPECT_TRUE(missing.Contains("n/a"));
    EXPECT_FALSE(missing.Contains(99.0));
    EXPECT_FALSE(missing.Contains("-99"));
    EXPECT_FALSE(missing.Contains(std::numeric_limits<double>::quiet_NaN()));
}

TEST(DeclaredMissing, HoldsTheSystemMissingNumber_OfAnyContinuousVariable) {
    EXPECT_TRUE(DeclaredMissing(*test::ContinuousVariable("age")).Contains(MCMV::gMissingValue));
    EXPECT_FALSE(DeclaredMissing(*test::ContinuousVariable("age")).Contains("n/a"));
    EXPECT_TRUE(DeclaredMissing(*WithMissingValues(test::ContinuousVariable("age"))).Contains(MCMV::gMissingValue));
}

TEST(DeclaredMissing, HoldsNothing_OfACategoricalVariable) {
    const DeclaredMissing missing(*WithMissingValues(test::NumberVariable("rooms", {1, 2})));
    EXPECT_FALSE(missing.Contains(-99.0));
    EXPECT_FALSE(missing.Contains("n/a"));
    EXPECT_FALSE(missing.Contains(MCMV::gMissingValue));
}

TEST(DeclaredMissing, StaysWhatItIs_WhenTheVariableIsGone) {
    auto var = WithMissingValues(test::ContinuousVariable("age"));
    const DeclaredMissing missing(*var);
    var.reset();
    EXPECT_TRUE(missing.Contains(-99.0));
    EXPECT_FALSE(missing.Contains(1.0));
}

/// A variable of another class, with a rule of its own.
class OddVariable : public BaseDictVar {
public:
    OddVariable() : BaseDictVar("odd", NumericStorage, Continuous) {}
    ScoreDictVar* Clone() const override { return new OddVariable(); }
    bool IsMissingValue(const ScoreValue* value) const override { return value->GetDouble() == 13.0; }
};

TEST(DeclaredMissing, AsksVariablesOfOtherClasses) {
    const DeclaredMissing missing{OddVariable()};
    EXPECT_TRUE(missing.Contains(13.0));
    EXPECT_FALSE(missing.Contains(12.0));
    EXPECT_FALSE(missing.Contains(MCMV::gMissingValue));
}

}  // namespace
}  // namespace nbscore
