#include "framework/ValueInterval.h"

#include <gtest/gtest.h>

namespace {

TEST(ValueInterval, ContainsItsMargins_OnlyWhereItIsClosed) {
    const ValueInterval openOpen{ValueInterval::OpenOpen, 1.0, 2.0};
    const ValueInterval openClosed{ValueInterval::OpenClosed, 1.0, 2.0};
    const ValueInterval closedOpen{ValueInterval::ClosedOpen, 1.0, 2.0};
    const ValueInterval closedClosed{ValueInterval::ClosedClosed, 1.0, 2.0};

    EXPECT_FALSE(openOpen.Contains(1.0));
    EXPECT_FALSE(openOpen.Contains(2.0));
    EXPECT_FALSE(openClosed.Contains(1.0));
    EXPECT_TRUE(openClosed.Contains(2.0));
    EXPECT_TRUE(closedOpen.Contains(1.0));
    EXPECT_FALSE(closedOpen.Contains(2.0));
    EXPECT_TRUE(closedClosed.Contains(1.0));
    EXPECT_TRUE(closedClosed.Contains(2.0));
    for (const ValueInterval& interval : {openOpen, openClosed, closedOpen, closedClosed}) {
        EXPECT_TRUE(interval.Contains(1.5));
        EXPECT_FALSE(interval.Contains(0.5));
        EXPECT_FALSE(interval.Contains(2.5));
    }
}

TEST(ValueInterval, IsUnbounded_WhereNoMarginIsGiven) {
    const ValueInterval everything;
    EXPECT_TRUE(everything.Contains(-1e300));
    EXPECT_TRUE(everything.Contains(1e300));

    ValueInterval fromZero;
    fromZero.leftMargin = 0.0;
    EXPECT_FALSE(fromZero.Contains(-1.0));
    EXPECT_TRUE(fromZero.Contains(1e300));
}

TEST(ValueInterval, ContainsTheInfinityOnASideWithoutMargin_WhateverTheClosure) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto closure :
         {ValueInterval::OpenOpen, ValueInterval::OpenClosed, ValueInterval::ClosedOpen, ValueInterval::ClosedClosed}) {
        ValueInterval fromOne{closure};
        fromOne.leftMargin = 1.0;
        EXPECT_TRUE(fromOne.Contains(infinity));
        EXPECT_FALSE(fromOne.Contains(-infinity));
        ValueInterval toOne{closure};
        toOne.rightMargin = 1.0;
        EXPECT_FALSE(toOne.Contains(infinity));
        EXPECT_TRUE(toOne.Contains(-infinity));
    }
}

TEST(ValueInterval, ContainsNoNan) {
    EXPECT_FALSE(ValueInterval{ValueInterval::OpenOpen}.Contains(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(ValueInterval{}.Contains(std::numeric_limits<double>::quiet_NaN()));
}

}  // namespace
