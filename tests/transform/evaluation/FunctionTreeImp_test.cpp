#include "transform/evaluation/Expression.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace {

using nbscore::ExpressionValue;

class NoFields : public nbscore::FieldValues {
public:
    nbscore::WorkBudget& Budget() const override { return budget; }

private:
    ExpressionValue ValueOf(const nbscore::FieldReference&) const override { return {}; }

    mutable nbscore::WorkBudget budget{nbscore::WorkBudget::ofCase};
};

class Fixed : public nbscore::Expression {
public:
    explicit Fixed(ExpressionValue fixedValue) : value(std::move(fixedValue)) {}

private:
    ExpressionValue ValueFor(const nbscore::FieldValues&) const override { return value; }

    ExpressionValue value;
};

ExpressionValue Evaluate(bool givesNumbers, ExpressionValue value) {
    FunctionTreeImp function(givesNumbers);
    function.SetExpression(std::make_unique<Fixed>(std::move(value)));
    const FunctionTreeImp moved = std::move(function);
    return moved.Evaluate(NoFields());
}

TEST(FunctionTreeImp, GivesNumbers_WhenMadeForThem) {
    EXPECT_EQ(Evaluate(true, 2.5), ExpressionValue(2.5));
    EXPECT_EQ(Evaluate(true, std::string(" 2.5 ")), ExpressionValue(2.5));
    EXPECT_EQ(Evaluate(true, std::string("two")), ExpressionValue());
    EXPECT_EQ(Evaluate(true, true), ExpressionValue(1.0));
    EXPECT_EQ(Evaluate(true, false), ExpressionValue(0.0));
    EXPECT_EQ(Evaluate(true, {}), ExpressionValue());
    EXPECT_TRUE(FunctionTreeImp(true).GivesNumbers());
}

TEST(FunctionTreeImp, GivesTexts_WhenMadeForThem) {
    EXPECT_EQ(Evaluate(false, 2.50), ExpressionValue(std::string("2.5")));
    EXPECT_EQ(Evaluate(false, std::string(" two ")), ExpressionValue(std::string(" two ")));
    EXPECT_EQ(Evaluate(false, true), ExpressionValue(std::string("true")));
    EXPECT_EQ(Evaluate(false, false), ExpressionValue(std::string("false")));
    EXPECT_EQ(Evaluate(false, {}), ExpressionValue());
    EXPECT_FALSE(FunctionTreeImp(false).GivesNumbers());
}

TEST(FunctionTreeImp, GivesNothing_WhenItHasNoExpression) {
    EXPECT_EQ(FunctionTreeImp(true).Evaluate(NoFields()), ExpressionValue());
}

}  // namespace
