#include "framework/MCMV.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

TEST(MCMV, IsTheMostNegativeFiniteDouble) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(MCMV::gMissingValue), 0xFFEFFFFFFFFFFFFFU);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(MCMV::Missing()), 0xFFEFFFFFFFFFFFFFU);
}

TEST(MCMV, RecognisesExactlyTheMissingValue) {
    EXPECT_TRUE(MCMV::IsMissing(MCMV::Missing()));
    EXPECT_FALSE(MCMV::IsMissing(std::nextafter(MCMV::Missing(), 0.0)));
    EXPECT_FALSE(MCMV::IsMissing(-std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(MCMV::IsMissing(std::numeric_limits<double>::max()));
    EXPECT_FALSE(MCMV::IsMissing(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(MCMV::IsMissing(0.0));
}

}  // namespace
