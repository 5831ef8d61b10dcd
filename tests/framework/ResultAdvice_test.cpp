#include "framework/ResultAdvice.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class SignedAdvice : public ResultAdvice {
public:
    using ResultAdvice::ResultAdvice;
    ResultAdvice* Clone() const override { return new SignedAdvice(*this); }
};

TEST(ResultAdvice, SaysNothing_WhenNew) {
    const ResultAdvice advice;

    EXPECT_EQ(advice.GetCode(), 0);
    EXPECT_EQ(advice.GetText(), "");
}

TEST(ResultAdvice, CopiesCodeAndText) {
    const ResultAdvice advice(3, "income estimated");
    const ResultAdvice copy = advice;
    const std::unique_ptr<ResultAdvice> clone(advice.Clone());

    EXPECT_EQ(copy.GetCode(), 3);
    EXPECT_EQ(copy.GetText(), "income estimated");
    EXPECT_EQ(clone->GetCode(), 3);
    EXPECT_EQ(clone->GetText(), "income estimated");
    EXPECT_NE(clone.get(), &advice);
}

TEST(ResultAdvice, ClonesItsOwnClass_WhenDerived) {
    const SignedAdvice advice(1, "seen");
    const std::unique_ptr<ResultAdvice> clone(static_cast<const ResultAdvice&>(advice).Clone());

    EXPECT_NE(dynamic_cast<const SignedAdvice*>(clone.get()), nullptr);
}

}  // namespace
